#pragma once

#include <asio/any_io_executor.hpp>
#include <asio/posix/stream_descriptor.hpp>

#include <functional>
#include <set>
#include <string>

namespace Platform {

/// What is mounted where, for the process (proc_pid_mountinfo(5)). A path leads elsewhere from a
/// mount on, and after its end, and no folder has a record of that; the table says so without being
/// asked over and over. For one thread at a time.
class MountTable {
public:
    /// Without the system's table nothing ever changes.
    explicit MountTable(const asio::any_io_executor& executor);

    /// Calls the handler once, on the executor, when mounts have changed since it was set; not
    /// after the end. A change before that shows in the next `changes`.
    void waitForChange(std::function<void()> handler);

    /// The paths at which something was mounted, or is not any more, since the last call.
    std::set<std::string> changes();

private:
    std::set<std::string> read();

    asio::posix::stream_descriptor descriptor_;
    std::set<std::string> mounts_; // a line each, without what may change while it lasts
};

} // namespace Platform
