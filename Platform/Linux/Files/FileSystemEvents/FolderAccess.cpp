#include "Platform/Linux/Files/FileSystemEvents/FolderAccess.h"

#include "Platform/Linux/Files/LongPath.h"
#include "Platform/POSIX/FolderListing.h"

#include <fcntl.h>

#include <climits>

namespace Platform {
namespace {

constexpr int withoutLinks = O_DIRECTORY | O_NOFOLLOW;

} // namespace

int addWatch(Inotify& inotify, const std::string& path, std::uint32_t events) {
    if (path.size() < PATH_MAX)
        return inotify.add(path.c_str(), events | IN_DONT_FOLLOW);
    const auto folder = openLongPath(path, O_PATH | withoutLinks);
    return folder.fileDescriptor() == -1 ? -1 : inotify.add(folder.fileDescriptor(), events);
}

int forEachSubfolder(const std::string& path, const std::function<void(std::string_view)>& visit) {
    FolderListing listing(openLongPath(path, O_RDONLY | O_NONBLOCK | withoutLinks));
    while (const auto* entry = listing.next()) {
        if (entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN)
            visit(entry->d_name);
    }
    return listing.failure();
}

} // namespace Platform
