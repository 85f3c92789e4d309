#include "CorbelKit/Services/UserDataFolder.h"

#include "CorbelKit/Services/InfoPlist.h"
#include "Platform/FileManager.h"

namespace CorbelKit {

std::optional<Platform::URL> userDataFolder() {
    const auto info = InfoPlist::ofMainBundle();
    const auto all = Platform::FileManager::applicationSupportDirectory();
    if (!info || !all)
        return std::nullopt;
    auto folder = all->appending(info->identifier, Platform::URL::DirectoryHint::isDirectory);
    if (!Platform::FileManager::createDirectory(folder))
        return std::nullopt;
    return folder;
}

} // namespace CorbelKit
