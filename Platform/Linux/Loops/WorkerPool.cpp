#include "Platform/Linux/Loops/WorkerPool.h"

#include "Platform/NeverDestroyed.h"

#include <asio/thread_pool.hpp>

namespace Platform {

asio::any_io_executor workerExecutor() {
    // Nothing that may block runs here, so two are enough for one task not to hold another.
    static const NeverDestroyed<asio::thread_pool> pool(2);
    return pool.get().get_executor();
}

TimerQueue& workerTimers() {
    static const NeverDestroyed<TimerQueue> timers(workerExecutor());
    return timers.get();
}

} // namespace Platform
