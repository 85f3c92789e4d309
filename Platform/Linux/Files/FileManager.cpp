#include "Platform/FileManager.h"

#include "Platform/Linux/Desktop/DesktopEntries.h"
#include "Platform/Linux/Files/BaseFolders.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

namespace Platform::FileManager {
namespace {

std::optional<URL> startupFolder(std::string_view name) {
    constexpr std::string_view inHome = "~/";
    std::filesystem::path path(name);
    if (name.starts_with(inHome)) {
        const auto home = homeDirectoryForRealUser();
        if (!home)
            return std::nullopt;
        path = std::filesystem::path(home->path()) / name.substr(inHome.size());
    }
    if (!path.is_absolute())
        return std::nullopt;
    path = path.lexically_normal();
    if (!path.has_filename())
        path = path.parent_path();
    return URL::file(path.native(), URL::DirectoryHint::isDirectory);
}

} // namespace

std::vector<URL> localLibraryDirectories() {
    const char* const standIn = std::getenv("CORBEL_LOCAL_LIBRARY");
    const bool usable = standIn != nullptr && *standIn == '/';
    return {URL::file(usable ? standIn : "/Library", URL::DirectoryHint::isDirectory)};
}

std::vector<URL> startupFolders() {
    const char* const named = std::getenv("CORBEL_STARTUP_FOLDERS");
    std::string_view rest = named != nullptr ? named : "";
    std::vector<URL> folders;
    while (!rest.empty()) {
        const auto name = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        if (auto folder = startupFolder(name))
            folders.push_back(std::move(*folder));
    }
    return folders;
}

std::string displayName(const URL& url) {
    const auto name = url.isFileURL() ? DesktopEntries::localizedName(url.path()) : std::nullopt;
    return name.value_or(url.lastPathComponent());
}

std::optional<URL> applicationSupportDirectory() {
    const auto data = baseFolder("XDG_DATA_HOME", ".local/share");
    if (!data)
        return std::nullopt;
    return URL::file((*data / "tarnwell").native(), URL::DirectoryHint::isDirectory);
}

std::string currentDirectoryPath() {
    std::error_code error;
    const auto folder = std::filesystem::current_path(error);
    // A current folder that was removed has no path any more, but it still has this name.
    return error ? "/proc/self/cwd" : folder.string();
}

} // namespace Platform::FileManager
