#include "Platform/Linux/Files/FileSystemEvents/LeafFolders.h"

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace Platform {
namespace {

constexpr nlink_t ofLeaf = 2;

} // namespace

bool LeafFolders::contains(int folder) {
    struct stat status{};
    return fstat(folder, &status) == 0 && status.st_nlink == ofLeaf &&
           countsSubfolders(status.st_dev, folder);
}

// Others give every folder the same count, or what a server or a program claims.
bool LeafFolders::countsSubfolders(dev_t device, int folder) {
    if (!last_ || last_->first != device) {
        struct statfs system{};
        const bool counts =
            fstatfs(folder, &system) == 0 &&
            (system.f_type == EXT4_SUPER_MAGIC || system.f_type == XFS_SUPER_MAGIC ||
             system.f_type == F2FS_SUPER_MAGIC || system.f_type == TMPFS_MAGIC);
        last_ = {device, counts};
    }
    return last_->second;
}

} // namespace Platform
