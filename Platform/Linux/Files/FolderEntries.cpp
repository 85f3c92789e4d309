#include "Platform/FileManager.h"
#include "Platform/Linux/Files/LongPath.h"
#include "Platform/POSIX/FolderListing.h"
#include "Platform/POSIX/SystemError.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace Platform::FileManager {
namespace {

bool isFolder(const dirent& entry, int folder) {
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status{}; // file systems need not say so in their listings
    return fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

} // namespace

std::optional<Error>
forEachEntry(const std::string& folder, ListingOptions options,
             const std::function<void(std::string_view name, bool isFolder)>& visit) {
    if (!folder.starts_with('/') || folder.find('\0') != std::string::npos)
        return Error{folder + ": names no folder"};
    FolderListing listing(openLongPath(folder, O_RDONLY | O_DIRECTORY | O_NONBLOCK));
    const bool skipsHidden = contains(options, ListingOptions::skipsHiddenFiles);
    while (const auto* entry = listing.next()) {
        const std::string_view name = entry->d_name;
        if (!(skipsHidden && name.starts_with('.')))
            visit(name, isFolder(*entry, listing.fileDescriptor()));
    }
    if (listing.failure() != 0)
        return systemError(folder, listing.failure());
    return std::nullopt;
}

} // namespace Platform::FileManager
