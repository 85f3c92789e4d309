#pragma once

#include "Platform/Mutex.h"

#include <asio/any_io_executor.hpp>
#include <asio/posix/stream_descriptor.hpp>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <utility>

namespace Platform {

/// Timers of one executor, behind one descriptor that is set for the first of them
/// (timerfd_create(2)), and for none while there is none. (Asio's own timers wake their thread
/// every five minutes ever after.) Lasts as long as the process. Callable on any thread.
class TimerQueue {
public:
    using Clock = std::chrono::steady_clock;
    using Time = Clock::time_point;

    /// Of one timer.
    using Number = std::pair<Time, std::uint64_t>;

    explicit TimerQueue(asio::any_io_executor executor);

    /// The task runs once, on a thread of the executor, at the time or soon after it, and after
    /// those of earlier times. Other timers wait for it to return. It must not throw.
    Number start(Time time, std::function<void()> task);

    /// The task does not run any more, unless it is about to.
    void cancel(const Number& timer);

private:
    using Descriptor = asio::posix::stream_descriptor;

    void set() CORBEL_REQUIRES(mutex_);
    bool setDescriptor(Time time) CORBEL_REQUIRES(mutex_);
    void wait() CORBEL_REQUIRES(mutex_);
    void runDue();

    const asio::any_io_executor executor_;
    Mutex mutex_;
    Descriptor descriptor_ CORBEL_GUARDED_BY(mutex_);
    std::map<Number, std::function<void()>> tasks_ CORBEL_GUARDED_BY(mutex_);
    std::uint64_t lastNumber_ CORBEL_GUARDED_BY(mutex_) = 0;
    Time setFor_ CORBEL_GUARDED_BY(mutex_) = Time::max(); // never
};

} // namespace Platform
