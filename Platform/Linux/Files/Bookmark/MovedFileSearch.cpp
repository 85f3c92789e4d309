#include "Platform/Linux/Files/Bookmark/MovedFileSearch.h"

#include "Platform/POSIX/FolderListing.h"

#include <fcntl.h>

#include <climits>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace Platform {
namespace {

namespace fs = std::filesystem;

constexpr int folderToList = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;

/// Free of links, for the way up would else not lead back to where the file lay.
fs::path nearestFolder(const std::string& oldPath) {
    std::error_code failure;
    auto folder = fs::path(oldPath).parent_path();
    auto existing = fs::canonical(folder, failure);
    while (failure && folder.has_relative_path()) {
        folder = folder.parent_path();
        existing = fs::canonical(folder, failure);
    }
    return existing;
}

std::string joined(std::string path, std::string_view name) {
    if (!path.ends_with('/'))
        path += '/';
    return path.append(name);
}

bool mayBeFolder(const dirent& entry) {
    return entry.d_type == DT_DIR || entry.d_type == DT_UNKNOWN;
}

} // namespace

std::optional<std::string> MovedFileSearch::find(const std::string& oldPath) {
    folders_.push_back({.above = nullptr, .name = nearestFolder(oldPath)});
    for (std::size_t next = 0; next < folders_.size() && entriesRead_ < mostEntries_; ++next) {
        if (auto path = look(folders_[next]))
            return path;
    }
    return std::nullopt;
}

std::string MovedFileSearch::pathOf(const Folder& folder) {
    std::vector<const Folder*> way;
    for (const auto* step = &folder; step != nullptr; step = step->above)
        way.push_back(step);
    std::string path = way.back()->name;
    for (auto step = std::next(way.rbegin()); step != way.rend(); ++step)
        path = joined(std::move(path), (*step)->name);
    return path;
}

std::optional<std::string> MovedFileSearch::look(const Folder& folder) {
    const auto path = pathOf(folder);
    if (!isNewHere(path))
        return std::nullopt;
    FolderListing listing(FileHandle(open(path.c_str(), folderToList)));
    while (const auto* entry = listing.next()) {
        const std::string_view name = entry->d_name;
        if (++entriesRead_ > mostEntries_)
            break;
        if (isWanted(*entry, listing.fileDescriptor()))
            return joined(path, name);
        if (mayBeFolder(*entry) && path.size() + name.size() + 1 < PATH_MAX)
            folders_.push_back({.above = &folder, .name = std::string(name)});
    }
    if (folder.above == nullptr && path != "/")
        folders_.push_back({.above = nullptr, .name = fs::path(path).parent_path()});
    return std::nullopt;
}

bool MovedFileSearch::isNewHere(const std::string& folder) {
    // Asked before the folder is opened, which would mount what waits to be mounted there.
    const auto identity = FileIdentity::at(folder);
    return identity && identity->isFolder && identity->device == wanted_.device &&
           visited_.insert(identity->inode).second;
}

bool MovedFileSearch::isWanted(const dirent& entry, int folder) const {
    if (entry.d_ino != wanted_.inode)
        return false;
    const auto identity = FileIdentity::at(folder, entry.d_name);
    return identity && identity->device == wanted_.device && identity->isOfSameFileAs(wanted_);
}

} // namespace Platform
