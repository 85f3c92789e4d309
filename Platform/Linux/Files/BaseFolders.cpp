#include "Platform/Linux/Files/BaseFolders.h"

#include "Platform/FileManager.h"

#include <cstdlib>

namespace Platform {

std::optional<std::filesystem::path> baseFolder(const char* variable, const char* defaultInHome) {
    const char* const named = std::getenv(variable);
    if (named != nullptr && *named == '/')
        return std::filesystem::path(named).lexically_normal();
    const auto home = FileManager::homeDirectoryForRealUser();
    if (!home)
        return std::nullopt;
    return std::filesystem::path(home->path()) / defaultInHome;
}

} // namespace Platform
