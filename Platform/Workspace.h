#pragma once

#include <optional>
#include <string>

/// The user's desktop and the other applications on it.
namespace Platform::Workspace {

/// The localised name of the application in front, the one that owns the menu bar. Absent when
/// none is, or the session has no way to tell. Main thread.
std::optional<std::string> menuBarOwningApplicationName();

} // namespace Platform::Workspace
