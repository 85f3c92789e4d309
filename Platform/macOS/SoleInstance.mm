#include "Platform/macOS/SoleInstance.h"

#include "Platform/DispatchQueue.h"
#include "Platform/FileManager.h"
#include "Platform/POSIX/FileSystemPath.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <semaphore>

namespace Platform {
namespace {

/// A file beside the user's data of the application, open until the process ends; -1 for none.
int openLock(const std::string& identifier) {
    const auto support = FileManager::applicationSupportDirectory();
    if (!support || !canNameFile(identifier, ""))
        return -1;
    const auto folder = fileSystemPath(support->appending(identifier));
    if (!folder)
        return -1;
    std::error_code failure;
    std::filesystem::create_directories(*folder, failure);
    return ::open((*folder + "/running").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
}

} // namespace

bool becomesSoleInstance(const std::string& identifier, std::chrono::milliseconds patience) {
    const int lock = openLock(identifier);
    if (lock < 0 || ::flock(lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
        return true;
    // The kernel lets go of the other's lock when the other ends, however it ends: flock(2).
    const auto ended = std::make_shared<std::binary_semaphore>(0);
    DispatchQueue::blocking("com.tarnwell.SoleInstance").async([lock, ended] {
        while (::flock(lock, LOCK_EX) != 0 && errno == EINTR) {
        }
        ended->release();
    });
    return ended->try_acquire_for(patience);
}

} // namespace Platform
