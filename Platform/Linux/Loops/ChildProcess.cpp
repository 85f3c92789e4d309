#include "Platform/POSIX/ChildProcess.h"

#include "Platform/Linux/Loops/WorkerPool.h"

#include <asio/posix/stream_descriptor.hpp>
#include <asio/post.hpp>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

namespace Platform {
namespace {

using Descriptor = asio::posix::stream_descriptor;

void collect(pid_t child) {
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

/// A descriptor that becomes readable when the child ends; null where there is none to be had.
std::unique_ptr<Descriptor> descriptorOf(pid_t child) {
    const auto number = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
    if (number < 0)
        return nullptr;
    auto descriptor = std::make_unique<Descriptor>(workerExecutor());
    std::error_code error;
    descriptor->assign(number, error);
    if (error) {
        close(number);
        return nullptr;
    }
    return descriptor;
}

} // namespace

int closeAllButStandardStreams(posix_spawn_file_actions_t& actions,
                               posix_spawnattr_t& /*attributes*/) {
    return posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
}

void collectWhenEnded(pid_t child) {
    auto descriptor = descriptorOf(child);
    if (!descriptor) {
        // A kernel before 5.3, or no descriptor left: a worker has to wait in person.
        asio::post(workerExecutor(), [child] { collect(child); });
        return;
    }
    auto& waiting = *descriptor;
    waiting.async_wait(Descriptor::wait_read,
                       [child, held = std::move(descriptor)](const std::error_code& error) {
                           if (!error)
                               collect(child);
                       });
}

} // namespace Platform
