#include "Platform/Linux/Loops/BlockingThreads.h"

#include "Platform/Linux/Loops/WorkerPool.h"
#include "Platform/NeverDestroyed.h"

#include <asio/post.hpp>

#include <system_error>
#include <utility>

namespace Platform {

BlockingThreads& BlockingThreads::shared() {
    static const NeverDestroyed<BlockingThreads> threads;
    return threads.get();
}

void BlockingThreads::start(std::function<void()> task) {
    const MutexLock lock(mutex_);
    const auto place = threads_.emplace(threads_.end());
    try {
        *place = std::thread([this, place, task] {
            task();
            asio::post(workerExecutor(), [this, place] { join(place); });
        });
    } catch (const std::system_error&) {
        threads_.erase(place);
        asio::post(workerExecutor(), std::move(task));
    }
}

// A worker waits for no more than the last steps of the thread.
void BlockingThreads::join(Threads::iterator ended) {
    Threads thread;
    {
        const MutexLock lock(mutex_);
        thread.splice(thread.end(), threads_, ended);
    }
    thread.front().join();
}

void BlockingSequence::add(std::function<void()> task) {
    const MutexLock lock(mutex_);
    tasks_.push_back(std::move(task));
    if (!std::exchange(isRunning_, true))
        BlockingThreads::shared().start([self = shared_from_this()] { self->run(); });
}

void BlockingSequence::run() {
    for (;;) {
        std::function<void()> task;
        {
            const MutexLock lock(mutex_);
            if (tasks_.empty()) {
                isRunning_ = false;
                return;
            }
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        task();
    }
}

} // namespace Platform
