#pragma once

#include <optional>
#include <string>

/// The desktop's settings by their entries: of GNOME, of KDE's Plasma or of Xfce, the first that is
/// installed. Callable on any thread.
namespace Platform::SettingsEntries {

/// The file of the settings application's entry.
std::optional<std::string> application();

/// The file of the entry for the settings of what is started when the user logs in.
std::optional<std::string> loginItems();

} // namespace Platform::SettingsEntries
