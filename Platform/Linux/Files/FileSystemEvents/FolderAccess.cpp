#include "Platform/Linux/Files/FileSystemEvents/FolderAccess.h"

#include "Platform/Linux/Files/LongPath.h"

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

constexpr int withoutLinks = O_DIRECTORY | O_NOFOLLOW;

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
    const auto folder = openLongPath(path, O_PATH | withoutLinks);
    if (folder.fileDescriptor() == -1)
        return -1;
    const auto link = "/proc/self/fd/" + std::to_string(folder.fileDescriptor());
    return inotify_add_watch(inotify, link.c_str(), events);
}

int forEachSubfolder(const std::string& path, const std::function<void(std::string_view)>& visit) {
    const auto folder = openLongPath(path, O_RDONLY | O_NONBLOCK | withoutLinks);
    if (folder.fileDescriptor() == -1)
        return errno;
    alignas(dirent64) std::array<char, 32768> buffer;
    ssize_t count = 0;
    while ((count = getdents64(folder.fileDescriptor(), buffer.data(), buffer.size())) > 0)
        visitRecords({buffer.data(), static_cast<std::size_t>(count)}, visit);
    return count == 0 ? 0 : errno;
}

} // namespace Platform
