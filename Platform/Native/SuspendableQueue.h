#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Mutex.h"

#include <deque>
#include <functional>
#include <memory>
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
    void wake() CORBEL_REQUIRES(mutex_);
    void run();
    std::optional<Task> next();

    const DispatchQueue queue_;
    Mutex mutex_; // no task runs, or ends, under it
    unsigned suspensions_ CORBEL_GUARDED_BY(mutex_) = 1;
    bool isOpen_ CORBEL_GUARDED_BY(mutex_) = false;
    bool isRunning_ CORBEL_GUARDED_BY(mutex_) = false;
    std::deque<Task> tasks_ CORBEL_GUARDED_BY(mutex_);
};

} // namespace Platform
