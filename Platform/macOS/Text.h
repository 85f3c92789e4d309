#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

/// Texts on their way between this system, which has them as bytes, and Foundation.
namespace Platform {

/// nil when the bytes are not UTF-8.
NSString* foundationText(std::string_view text);

/// UTF-8. Half a surrogate pair, which UTF-8 has no form for, is replaced; nil gives the empty
/// text.
std::string portableText(NSString* text);

/// Why something failed, in the system's words, which may have several lines: as one.
std::string lineOf(NSError* error);

} // namespace Platform
