#pragma once

#include "Platform/URL.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// The user's desktop and the other applications on it.
namespace Platform::Workspace {

/// Finds the localised name of the application in front, the one that owns the menu bar. The
/// completion is called once, on the main thread, after the call. Absent when no application is in
/// front, or the desktop has no way to say so, or does not say so within half a second.
/// Main thread.
void findMenuBarOwningApplication(std::function<void(std::optional<std::string> name)> completion);

/// Opens the URL, text unchanged, with the application that the user has for it; the URL of an
/// application starts that application or brings it to the front. Returns at once; that nothing
/// came of it is said in the log alone. Needs the application's main loop. Any thread.
void open(const URL& url);

/// Where the application with the identifier (reverse-DNS form) is installed, for `open`. Any
/// thread.
std::optional<URL> urlForApplication(std::string_view bundleIdentifier);

} // namespace Platform::Workspace
