#include "Platform/FileManager.h"

#include "Platform/Linux/Desktop/DesktopEntries.h"
#include "Platform/Linux/Files/BaseFolders.h"

#include <cstdlib>
#include <filesystem>

namespace Platform::FileManager {

std::vector<URL> localLibraryDirectories() {
    const char* const standIn = std::getenv("CORBEL_LOCAL_LIBRARY");
    const bool usable = standIn != nullptr && *standIn == '/';
    return {URL::file(usable ? standIn : "/Library", URL::DirectoryHint::isDirectory)};
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
