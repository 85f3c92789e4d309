#include "Platform/Linux/Files/FileSystemEvents/FolderChanges.h"

#include <utility>

namespace Platform {

void FolderChanges::add(int folder, std::string_view name) {
    if (names_[folder].emplace(name).second)
        ++count_;
}

FolderChanges::Names FolderChanges::take(int folder) {
    auto taken = names_.extract(folder);
    if (taken.empty())
        return {};
    count_ -= taken.mapped().size();
    return std::move(taken.mapped());
}

std::unordered_map<int, FolderChanges::Names> FolderChanges::takeAll() {
    count_ = 0;
    return std::exchange(names_, {});
}

} // namespace Platform
