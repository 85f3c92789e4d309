#include "Vesper_Pro_Agent/JobFolders.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/FileManager.h"
#include "Platform/NeverDestroyed.h"

#include <algorithm>
#include <utility>

namespace Vesper_Pro_Agent {
namespace {

using Platform::URL;
namespace PathComponent = CorbelKit::Const::PathComponent;

URL folder(const URL& base, std::string_view component) {
    return base.appending(component, URL::DirectoryHint::isDirectory);
}

URL localLibraryFolder() {
    const auto libraries = Platform::FileManager::localLibraryDirectories();
    if (!libraries.empty())
        return libraries.front();
    return folder(URL::file("/"), PathComponent::library);
}

std::vector<URL> findJobFolders() {
    std::vector<URL> folders;
    if (const auto home = Platform::FileManager::homeDirectoryForRealUser()) {
        folders.push_back(
            folder(folder(*home, PathComponent::library), PathComponent::launchAgents));
    }
    const auto library = localLibraryFolder();
    for (const auto component : {PathComponent::launchAgents, PathComponent::launchDaemons,
                                 PathComponent::startupItems, PathComponent::privilegedHelperTools})
        folders.push_back(folder(library, component));
    for (auto& further : Platform::FileManager::startupFolders()) {
        if (std::ranges::find(folders, further.path(), &URL::path) == folders.end())
            folders.push_back(std::move(further));
    }
    return folders;
}

} // namespace

const std::vector<URL>& jobFolders() {
    static const Platform::NeverDestroyed<std::vector<URL>> folders(findJobFolders());
    return folders.get();
}

} // namespace Vesper_Pro_Agent
