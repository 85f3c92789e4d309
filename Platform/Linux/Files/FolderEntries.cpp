#include "Platform/FileHandle.h"
#include "Platform/FileManager.h"
#include "Platform/Linux/Files/LongPath.h"
#include "Platform/POSIX/SystemError.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>

namespace Platform::FileManager {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

using Listing = std::unique_ptr<DIR, CloseFolder>;

bool isFolder(const dirent& entry, int folder) {
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status{}; // file systems need not tell in their listings
    return fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

} // namespace

std::optional<Error>
forEachEntry(const std::string& folder, ListingOptions options,
             const std::function<void(std::string_view name, bool isFolder)>& visit) {
    if (!folder.starts_with('/') || folder.find('\0') != std::string::npos)
        return Error{folder + ": names no folder"};
    auto handle = openLongPath(folder, O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    const Listing listing(handle.fileDescriptor() < 0 ? nullptr
                                                      : fdopendir(handle.fileDescriptor()));
    if (!listing)
        return systemError(folder, errno);
    const int descriptor = handle.release(); // the listing closes it
    const bool skipsHidden = contains(options, ListingOptions::skipsHiddenFiles);
    errno = 0;
    while (const dirent* entry = readdir(listing.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && !(skipsHidden && name.starts_with('.')))
            visit(name, isFolder(*entry, descriptor));
        errno = 0;
    }
    if (errno != 0)
        return systemError(folder, errno);
    return std::nullopt;
}

} // namespace Platform::FileManager
