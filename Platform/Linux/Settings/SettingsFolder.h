#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace Platform {

/// The file of a settings domain, in $XDG_CONFIG_HOME/tarnwell (XDG Base Directory 0.8; by default
/// ~/.config/tarnwell). Neither file nor folder need exist. Absent for a name that no file can
/// have, and where the folder can never be made.
std::optional<std::filesystem::path> settingsFile(std::string_view domain);

} // namespace Platform
