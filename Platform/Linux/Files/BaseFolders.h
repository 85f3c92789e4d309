#pragma once

#include <filesystem>
#include <optional>

namespace Platform {

/// A folder of the XDG Base Directory 0.8: what the variable names by an absolute
/// path, or else the default in the user's home. It need not exist. Absent where the user has no
/// home.
std::optional<std::filesystem::path> baseFolder(const char* variable, const char* defaultInHome);

} // namespace Platform
