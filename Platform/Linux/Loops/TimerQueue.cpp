#include "Platform/Linux/Loops/TimerQueue.h"

#include <asio/steady_timer.hpp>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <system_error>
#include <vector>

namespace Platform {
namespace {

// Clock::time_point counts from the same beginning as CLOCK_MONOTONIC. A time of zero would mean
// none.
itimerspec oneTime(TimerQueue::Time time) {
    using std::chrono::nanoseconds;
    const auto sinceStart = std::max(nanoseconds(time.time_since_epoch()), nanoseconds(1));
    const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceStart);
    return {.it_interval = {},
            .it_value = {.tv_sec = seconds.count(), .tv_nsec = (sinceStart - seconds).count()}};
}

} // namespace

TimerQueue::TimerQueue(asio::any_io_executor executor)
    : executor_(std::move(executor))
    , descriptor_(executor_) {}

TimerQueue::Number TimerQueue::start(Time time, std::function<void()> task) {
    const MutexLock lock(mutex_);
    const Number number{time, ++lastNumber_};
    tasks_.emplace(number, std::move(task));
    set();
    return number;
}

void TimerQueue::cancel(const Number& timer) {
    const MutexLock lock(mutex_);
    if (tasks_.erase(timer) > 0)
        set();
}

void TimerQueue::set() {
    const auto first = tasks_.empty() ? Time::max() : tasks_.begin()->first.first;
    if (std::exchange(setFor_, first) == first)
        return;
    if (setDescriptor(first) || tasks_.empty())
        return;
    // No descriptor is to be had at present.
    auto timer = std::make_shared<asio::steady_timer>(executor_, first);
    timer->async_wait([this, timer](const auto&) { runDue(); });
}

bool TimerQueue::setDescriptor(Time time) {
    if (!descriptor_.is_open()) {
        const int made = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
        if (made == -1)
            return false;
        std::error_code failure;
        descriptor_.assign(made, failure);
        if (failure) {
            close(made);
            return false;
        }
        wait();
    }
    const auto when = time == Time::max() ? itimerspec{} : oneTime(time);
    return timerfd_settime(descriptor_.native_handle(), TFD_TIMER_ABSTIME, &when, nullptr) == 0;
}

void TimerQueue::wait() {
    descriptor_.async_wait(Descriptor::wait_read, [this](const auto&) {
        runDue();
        const MutexLock lock(mutex_);
        wait();
    });
}

void TimerQueue::runDue() {
    std::vector<std::function<void()>> due;
    {
        const MutexLock lock(mutex_);
        // That time has passed; setting the descriptor anew, or to none, makes it wait again.
        setFor_ = {};
        const auto end = tasks_.lower_bound({Clock::now() + Clock::duration(1), 0});
        for (auto task = tasks_.begin(); task != end; ++task)
            due.push_back(std::move(task->second));
        tasks_.erase(tasks_.begin(), end);
        set();
    }
    for (const auto& task : due)
        task();
}

} // namespace Platform
