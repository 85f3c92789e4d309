#include "Platform/Linux/Bus/BusThread.h"

#include "Platform/NeverDestroyed.h"

#include <asio/thread_pool.hpp>

namespace Platform {

asio::any_io_executor busExecutor() {
    static const NeverDestroyed<asio::thread_pool> thread(1U);
    return thread.get().get_executor();
}

TimerQueue& busTimers() {
    static const NeverDestroyed<TimerQueue> timers(busExecutor());
    return timers.get();
}

} // namespace Platform
