#include "Platform/Linux/Files/Bookmark/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace Platform {

std::optional<FileIdentity> FileIdentity::at(int folder, const std::string& path) {
    // Nothing is mounted for a mere look.
    constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH;
    struct statx status{};
    if (statx(folder, path.c_str(), flags, STATX_TYPE | STATX_INO | STATX_BTIME, &status) != 0)
        return std::nullopt;
    FileIdentity identity{.device = makedev(status.stx_dev_major, status.stx_dev_minor),
                          .inode = status.stx_ino,
                          .birthTime = std::nullopt,
                          .isFolder = S_ISDIR(status.stx_mode)};
    if ((status.stx_mask & STATX_BTIME) != 0) {
        identity.birthTime = {.seconds = status.stx_btime.tv_sec,
                              .nanoseconds = status.stx_btime.tv_nsec};
    }
    return identity;
}

std::optional<FileIdentity> FileIdentity::at(const std::string& absolutePath) {
    return at(AT_FDCWD, absolutePath);
}

bool FileIdentity::isOfSameFileAs(const FileIdentity& other) const {
    if (inode != other.inode || isFolder != other.isFolder)
        return false;
    return birthTime && other.birthTime ? birthTime == other.birthTime : device == other.device;
}

} // namespace Platform
