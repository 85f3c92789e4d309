#pragma once

#include "Platform/Mutex.h"

#include <functional>
#include <list>
#include <thread>

namespace Platform {

/// Threads for tasks that may block, for ever if need be: none of the few that run queues and
/// timers. Each runs one task and ends. Callable on any thread.
class BlockingThreads {
public:
    static BlockingThreads& shared();

    /// Without a thread to be had, a worker runs the task.
    void start(std::function<void()> task);

private:
    using Threads = std::list<std::thread>;

    void join(Threads::iterator ended);

    Mutex mutex_;
    Threads threads_ CORBEL_GUARDED_BY(mutex_); // not joined yet
};

} // namespace Platform
