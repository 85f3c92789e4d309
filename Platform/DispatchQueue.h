#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace Platform {

/// A labelled queue of tasks. A handle: copies mean the same queue. All operations may be called
/// on any thread.
///
/// Tasks start in the order in which they were sent. The tasks of a serial queue run one at a time
/// and each sees what the one before it wrote; the tasks of a concurrent queue run beside each
/// other. All queues but the main one and the blocking ones share a few threads, so a task must not
/// wait for another.
/// A task must not throw: that ends the process.
class DispatchQueue {
public:
    /// Owned by the queue until it has run.
    using Task = std::function<void()>;

    /// @{
    /// A new queue, which lasts until its last handle is gone and its last task has run.
    static DispatchQueue concurrent(std::string label);
    static DispatchQueue serial(std::string label);
    /// @}

    /// A new concurrent queue whose tasks may block, for ever if need be: on a disk, a display, a
    /// terminal, another process. They hold nobody but themselves.
    static DispatchQueue blocking(std::string label);

    /// A new serial queue whose tasks may block likewise: one that does holds those after it.
    static DispatchQueue serialBlocking(std::string label);

    /// The queue of the main thread, run by the application's main loop.
    static DispatchQueue main();

    /// For whoever looks at the process from outside: nothing depends on it.
    const std::string& label() const;

    /// Sends the task and returns at once, before or after it has run.
    void async(Task task) const;

    /// Sends the task when the delay has passed. A delay of zero or less means at once.
    void asyncAfter(std::chrono::nanoseconds delay, Task task) const;

private:
    friend class FileSystemObjectSource; // whose handlers a system may run on the queue itself
    friend class FileSystemEventStream;  // likewise
    class Impl;
    explicit DispatchQueue(std::shared_ptr<Impl> impl);

    std::shared_ptr<Impl> impl_;
};

} // namespace Platform
