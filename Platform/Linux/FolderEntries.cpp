#include "Platform/FileHandle.h"
#include "Platform/FileManager.h"
#include "Platform/POSIX/SystemError.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <memory>

namespace Platform::FileManager {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

using Listing = std::unique_ptr<DIR, CloseFolder>;

/// The kernel takes no path of PATH_MAX bytes, so a longer way is gone in stages.
FileHandle openFolder(std::string_view path) {
    constexpr std::size_t longest = PATH_MAX - 1;
    FileHandle stage(AT_FDCWD);
    while (path.size() > longest) {
        const auto end = path.rfind('/', longest);
        const std::string part(path.substr(0, end));
        stage = FileHandle(
            openat(stage.fileDescriptor(), part.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (stage.fileDescriptor() < 0)
            return stage;
        path.remove_prefix(end + 1);
    }
    return FileHandle(openat(stage.fileDescriptor(), std::string(path).c_str(),
                             O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC));
}

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
    auto handle = openFolder(folder);
    const Listing listing(handle.fileDescriptor() < 0 ? nullptr
                                                      : fdopendir(handle.fileDescriptor()));
    if (!listing)
        return systemError(folder, errno);
    handle.release(); // the listing closes it
    const bool skipsHidden = contains(options, ListingOptions::skipsHiddenFiles);
    errno = 0;
    while (const dirent* entry = readdir(listing.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && !(skipsHidden && name.starts_with('.')))
            visit(name, isFolder(*entry, dirfd(listing.get())));
        errno = 0;
    }
    if (errno != 0)
        return systemError(folder, errno);
    return std::nullopt;
}

} // namespace Platform::FileManager
