#include "Platform/Linux/Settings/FileReplacement.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace Platform {
namespace {

namespace fs = std::filesystem;

constexpr mode_t privateFile = 0600;

fs::path beside(fs::path file, const char* suffix) {
    return file += suffix;
}

std::optional<FileHandle> openFile(const fs::path& path, int flags) {
    const int descriptor =
        open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW, privateFile);
    return descriptor == -1 ? std::nullopt : std::optional<FileHandle>(descriptor);
}

bool writeNewFile(const fs::path& path, std::span<const std::byte> content) {
    unlink(path.c_str()); // left by a writer that came to a sudden end
    auto file = openFile(path, O_WRONLY | O_CREAT | O_EXCL);
    return file && !file->write(content) && fsync(file->fileDescriptor()) == 0 && !file->close();
}

} // namespace

std::optional<FileHandle> lockBeside(const fs::path& file) {
    auto lock = openFile(beside(file, ".lock"), O_RDONLY | O_CREAT);
    if (!lock)
        return std::nullopt;
    while (flock(lock->fileDescriptor(), LOCK_EX) != 0) {
        if (errno != EINTR)
            return std::nullopt;
    }
    return lock;
}

bool replaceFile(const fs::path& file, std::span<const std::byte> content) {
    const auto successor = beside(file, ".new");
    if (writeNewFile(successor, content) && rename(successor.c_str(), file.c_str()) == 0)
        return true;
    unlink(successor.c_str());
    return false;
}

} // namespace Platform
