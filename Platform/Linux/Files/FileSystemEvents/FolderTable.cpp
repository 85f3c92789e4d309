#include "Platform/Linux/Files/FileSystemEvents/FolderTable.h"

#include <ranges>

namespace Platform {

FolderTable::Folder* FolderTable::find(int folder) {
    const auto found = folders_.find(folder);
    return found == folders_.end() ? nullptr : &found->second;
}

void FolderTable::insert(int folder, int parent, std::string_view name) {
    auto& added = folders_[folder];
    added.name = name;
    added.parent = parent;
    attach(folder, added);
}

void FolderTable::move(int folder, int parent, std::string_view name) {
    auto& moved = folders_.at(folder);
    detach(moved);
    moved.name = name;
    moved.parent = parent;
    attach(folder, moved);
}

void FolderTable::attach(int number, Folder& folder) {
    folder.previousSibling = none;
    folder.nextSibling = none;
    if (folder.parent == none)
        return;
    auto& parent = folders_.at(folder.parent);
    folder.nextSibling = parent.firstChild;
    if (folder.nextSibling != none)
        folders_.at(folder.nextSibling).previousSibling = number;
    parent.firstChild = number;
}

void FolderTable::detach(const Folder& folder) {
    if (folder.nextSibling != none)
        folders_.at(folder.nextSibling).previousSibling = folder.previousSibling;
    if (folder.previousSibling != none) {
        folders_.at(folder.previousSibling).nextSibling = folder.nextSibling;
    } else if (folder.parent != none) {
        folders_.at(folder.parent).firstChild = folder.nextSibling;
    }
}

std::vector<int> FolderTable::subtree(int folder) const {
    std::vector<int> found = {folder};
    for (std::size_t index = 0; index < found.size(); ++index) {
        const auto below = children(found[index]);
        found.insert(found.end(), below.begin(), below.end());
    }
    return found;
}

std::vector<int> FolderTable::remove(int folder) {
    const auto* const top = find(folder);
    if (top == nullptr)
        return {};
    detach(*top);
    auto removed = subtree(folder);
    for (const int each : removed)
        folders_.erase(each);
    constexpr std::size_t emptiest = 8;
    if (folders_.size() < folders_.bucket_count() / emptiest)
        folders_.rehash(0); // a tree may have been large only once
    return removed;
}

std::vector<int> FolderTable::allBut(unsigned pass) const {
    std::vector<int> others;
    for (const auto& [number, folder] : folders_) {
        if (folder.pass != pass)
            others.push_back(number);
    }
    return others;
}

std::vector<int> FolderTable::children(int folder) const {
    std::vector<int> children;
    for (int child = folders_.at(folder).firstChild; child != none;
         child = folders_.at(child).nextSibling)
        children.push_back(child);
    return children;
}

bool FolderTable::isWithin(int folder, int ancestor) const {
    while (folder != none && folder != ancestor)
        folder = folders_.at(folder).parent;
    return folder != none;
}

std::string FolderTable::path(int folder) const {
    std::vector<const std::string*> names;
    while (folder != none) {
        const auto& entry = folders_.at(folder);
        names.push_back(&entry.name);
        folder = entry.parent;
    }
    std::string path;
    for (const auto* name : names | std::views::reverse) {
        if (path.empty()) {
            path = *name;
        } else {
            appendName(path, *name);
        }
    }
    return path;
}

void appendName(std::string& path, std::string_view name) {
    if (!path.ends_with('/'))
        path += '/';
    path += name;
}

} // namespace Platform
