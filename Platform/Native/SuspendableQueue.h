#pragma once

#include "Platform/DispatchQueue.h"

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace Platform {

/// A serial queue that can be made to wait. Made suspended, and held by shared pointers alone. All
/// operations may be called on any thread.
class SuspendableQueue : public std::enable_shared_from_this<SuspendableQueue> {
public:
    using Task = DispatchQueue::Task;

    explicit SuspendableQueue(std::string label);

    /// The task runs after those before it, when nothing suspends the queue.
    void async(Task task);

    /// No task begins any more; one under way goes on.
    void suspend();

    /// Takes one suspension back. True when none is left.
    bool resume();

    /// Takes all suspensions back, and allows no more.
    void open();

private:
    void wake(); // with mutex_ held
    void run();
    std::optional<Task> next();

    const DispatchQueue queue_;
    std::mutex mutex_;         // guards all that follows; no task runs, or ends, under it
    unsigned suspensions_ = 1; // mutex_
    bool isOpen_ = false;      // mutex_
    bool isRunning_ = false;   // mutex_
    std::deque<Task> tasks_;   // mutex_
};

} // namespace Platform
