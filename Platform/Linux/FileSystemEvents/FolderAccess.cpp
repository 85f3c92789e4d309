#include "Platform/Linux/FileSystemEvents/FolderAccess.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstring>
#include <utility>

namespace Platform {
namespace {

constexpr int withoutLinks = O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// Opens a folder in as many steps as its path needs.
FileHandle openFolder(std::string_view path, int flags) {
    FileHandle base(AT_FDCWD);
    while (path.size() >= PATH_MAX) {
        const auto cut = path.rfind('/', PATH_MAX - 1);
        const std::string piece(path.substr(0, cut));
        base = FileHandle(openat(base.fileDescriptor(), piece.c_str(), O_PATH | withoutLinks));
        if (base.fileDescriptor() == -1)
            return base;
        path.remove_prefix(cut + 1);
    }
    return FileHandle(openat(base.fileDescriptor(), std::string(path).c_str(), flags));
}

bool isHiddenLink(std::string_view name) {
    return name == "." || name == "..";
}

void visitRecords(std::string_view bytes, const std::function<void(std::string_view)>& visit) {
    while (!bytes.empty()) {
        std::uint16_t length = 0;
        std::memcpy(&length, bytes.data() + offsetof(dirent64, d_reclen), sizeof length);
        const auto type = static_cast<unsigned char>(bytes[offsetof(dirent64, d_type)]);
        if (type == DT_DIR || type == DT_UNKNOWN) {
            const std::string_view name = bytes.data() + offsetof(dirent64, d_name);
            if (!isHiddenLink(name))
                visit(name);
        }
        bytes.remove_prefix(length);
    }
}

} // namespace

int addInotifyWatch(int inotify, const std::string& path, std::uint32_t events) {
    if (path.size() < PATH_MAX)
        return inotify_add_watch(inotify, path.c_str(), events | IN_DONT_FOLLOW);
    const auto folder = openFolder(path, O_PATH | withoutLinks);
    if (folder.fileDescriptor() == -1)
        return -1;
    const auto link = "/proc/self/fd/" + std::to_string(folder.fileDescriptor());
    return inotify_add_watch(inotify, link.c_str(), events);
}

int forEachSubfolder(const std::string& path, const std::function<void(std::string_view)>& visit) {
    const auto folder = openFolder(path, O_RDONLY | O_NONBLOCK | withoutLinks);
    if (folder.fileDescriptor() == -1)
        return errno;
    alignas(dirent64) std::array<char, 32768> buffer;
    ssize_t count = 0;
    while ((count = getdents64(folder.fileDescriptor(), buffer.data(), buffer.size())) > 0)
        visitRecords({buffer.data(), static_cast<std::size_t>(count)}, visit);
    return count == 0 ? 0 : errno;
}

} // namespace Platform
