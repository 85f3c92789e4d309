#include "Platform/Linux/Settings/SettingsFolder.h"

#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/POSIX/FileSystemPath.h"

#include <string>

namespace Platform {
namespace {

namespace fs = std::filesystem;

// Beside the file stand its lock and its successor (".Domain.plist.saving"), whose names are
// longer.
constexpr std::string_view mostBesidesDomain = "..plist.saving";

bool canBeFolder(fs::path path) {
    std::error_code failure;
    while (!fs::exists(path, failure) && path.has_relative_path())
        path = path.parent_path();
    return fs::is_directory(path, failure);
}

} // namespace

std::optional<fs::path> settingsFile(std::string_view domain) {
    const auto configuration = baseFolder("XDG_CONFIG_HOME", ".config");
    if (!configuration || !canNameFile(domain, mostBesidesDomain))
        return std::nullopt;
    const auto folder = *configuration / "tarnwell";
    if (!canBeFolder(folder))
        return std::nullopt;
    return folder / std::string(domain).append(".plist");
}

} // namespace Platform
