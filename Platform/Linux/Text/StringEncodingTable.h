#pragma once

#include "Platform/TextServices.h"

#include <span>

namespace Platform {

/// An encoding that macOS has a number for and ICU a name; for a few, ICU has been built without
/// the converter.
struct NumberedEncoding {
    TextServices::EncodingNumber number;
    const char* converter; ///< the name it is registered by, or ICU's where there is none
    const char* writing;   ///< what it is for: a region (UN M.49), a script (ISO 15924), a language
                           ///< (BCP 47), or empty for all of Unicode
    const char* title;     ///< its usual name, the same in every language
};

/// In the order of their CFStringEncoding. Of several for one converter, the first is the one that
/// the converter's aliases stand for.
std::span<const NumberedEncoding> numberedEncodings();

} // namespace Platform
