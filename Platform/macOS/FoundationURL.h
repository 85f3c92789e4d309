#pragma once

#include "Platform/URL.h"

#import <Foundation/Foundation.h>

#include <optional>

/// URLs on their way between this system and Foundation.
namespace Platform {

/// The same text; nil where Foundation takes it for no URL.
NSURL* foundationURL(const URL& url);

/// Absent for nil, and for a file that has no path.
std::optional<URL> portableURL(NSURL* url);

} // namespace Platform
