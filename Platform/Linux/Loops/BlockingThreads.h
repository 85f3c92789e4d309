#pragma once

#include "Platform/Mutex.h"

#include <deque>
#include <functional>
#include <list>
#include <memory>
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

/// Tasks that may block, one after the other, on a thread while there are any. Callable on any
/// thread.
class BlockingSequence : public std::enable_shared_from_this<BlockingSequence> {
public:
    void add(std::function<void()> task);

private:
    void run();

    Mutex mutex_;
    std::deque<std::function<void()>> tasks_ CORBEL_GUARDED_BY(mutex_);
    bool isRunning_ CORBEL_GUARDED_BY(mutex_) = false;
};

} // namespace Platform
