#include "Platform/Linux/UserDefaults/SettingsFolder.h"

#include "Platform/FileManager.h"
#include "Platform/POSIX/FileSystemPath.h"

#include <cstdlib>
#include <string>

namespace Platform {
namespace {

namespace fs = std::filesystem;

// Beside the file stand its lock and its successor, whose names are longer.
constexpr std::string_view longestSuffix = ".plist.lock";

std::optional<fs::path> configurationFolder() {
    const char* const named = std::getenv("XDG_CONFIG_HOME");
    if (named != nullptr && *named == '/')
        return fs::path(named).lexically_normal();
    const auto home = FileManager::homeDirectoryForRealUser();
    if (!home)
        return std::nullopt;
    return fs::path(home->path()) / ".config";
}

bool canBeFolder(fs::path path) {
    std::error_code failure;
    while (!fs::exists(path, failure) && path.has_relative_path())
        path = path.parent_path();
    return fs::is_directory(path, failure);
}

} // namespace

std::optional<fs::path> settingsFile(std::string_view domain) {
    const auto configuration = configurationFolder();
    if (!configuration || !canNameFile(domain, longestSuffix))
        return std::nullopt;
    const auto folder = *configuration / "tarnwell";
    if (!canBeFolder(folder))
        return std::nullopt;
    return folder / std::string(domain).append(".plist");
}

} // namespace Platform
