#include "Platform/Linux/Settings/FileLock.h"

#include "Platform/POSIX/SystemError.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace Platform {

Expected<FileHandle> lockBeside(const std::filesystem::path& file) {
    constexpr int flags = O_RDONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW;
    constexpr mode_t privateFile = 0600;
    const auto path = file.native() + ".lock";
    FileHandle lock(uninterrupted([&] { return open(path.c_str(), flags, privateFile); }));
    if (lock.fileDescriptor() < 0 ||
        uninterrupted([&] { return flock(lock.fileDescriptor(), LOCK_EX); }) != 0)
        return systemError(path, errno);
    return lock;
}

} // namespace Platform
