#include "Platform/Linux/Loops/WorkerPool.h"

#include "Platform/NeverDestroyed.h"

#include <asio/thread_pool.hpp>

#include <algorithm>
#include <thread>

namespace Platform {

std::size_t workerCount() {
    // At least two, so that one task held by a slow disk or a stopped terminal does not hold the
    // timers; at most three, because the main thread hashes too, and more would not hash faster
    // than a disk reads.
    static const std::size_t count = std::clamp(std::thread::hardware_concurrency(), 2U, 3U);
    return count;
}

asio::any_io_executor workerExecutor() {
    static const NeverDestroyed<asio::thread_pool> pool(workerCount());
    return pool.get().get_executor();
}

} // namespace Platform
