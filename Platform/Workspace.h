#pragma once

#include "Platform/URL.h"

#include <optional>
#include <string>
#include <string_view>

/// The user's desktop and the other applications on it.
namespace Platform::Workspace {

/// The localised name of the application in front, the one that owns the menu bar. Absent when
/// none is, or the session has no way to tell, or does not tell at once: a desktop that hangs
/// holds the caller for a tenth of a second. Main thread.
std::optional<std::string> menuBarOwningApplicationName();

/// Opens the URL, text unchanged, with the application that the user has for it; the URL of an
/// application starts that application or brings it to the front. Returns at once; whether it
/// came to anything is not told. Needs the application's main loop. Any thread.
void open(const URL& url);

/// Where the application with the identifier (reverse-DNS form) is installed, for `open`. Any
/// thread.
std::optional<URL> urlForApplication(std::string_view bundleIdentifier);

} // namespace Platform::Workspace
