#pragma once

#include "Platform/Linux/Desktop/FrontWindow.h"

#include <optional>
#include <string>
#include <string_view>

/// The installed applications by their desktop entries (Desktop Entry 1.5), read
/// anew for each question: nothing is kept and no folder is watched. Callable on any thread.
namespace Platform::DesktopEntries {

/// The file of the entry named after the identifier; absent when there is none, or it says that
/// it was removed.
std::optional<std::string> pathForIdentifier(std::string_view identifier);

/// Whether the file is the entry of an installed application, which may be launched: one that
/// merely looks like it may come from anywhere.
bool isInstalled(std::string_view path);

/// The name, in the user's language, of the application whose entry the file is; absent when it is
/// no entry of an installed application.
std::optional<std::string> localizedName(std::string_view path);

/// The application's name in the user's language, from the entry that claims the window's class,
/// else the one named after it, else the one that starts the window's program.
std::optional<std::string> localizedName(const FrontWindow& window);

} // namespace Platform::DesktopEntries
