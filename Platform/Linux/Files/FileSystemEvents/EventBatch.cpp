#include "Platform/Linux/Files/FileSystemEvents/EventBatch.h"

#include "Platform/Linux/Loops/WorkerPool.h"

#include <asio/post.hpp>

#include <utility>
#include <vector>

namespace Platform {
namespace {

// Reached only where a call-back takes long amid a storm, or where folders lie so deep that each
// path is long: then the next batch says to look at everything, and memory stays bounded.
constexpr std::size_t mostPaths = 200'000;
constexpr std::size_t mostBytes = std::size_t{32} << 20U; // of all paths

} // namespace

EventBatch::EventBatch(DispatchQueue queue, std::chrono::nanoseconds latency, std::string whole,
                       FileSystemEventStream::Callback callback, std::function<void()> whenDue)
    : queue_(std::move(queue))
    , latency_(latency)
    , callback_(std::move(callback))
    , whenDue_(std::move(whenDue))
    , whole_(std::move(whole)) {}

void EventBatch::add(std::string path) {
    const MutexLock lock(mutex_);
    if (hasEnded_ || isFull_)
        return;
    if (paths_.empty())
        startTimer();
    const auto size = path.size();
    if (paths_.insert(std::move(path)).second)
        bytes_ += size;
    if (paths_.size() <= mostPaths && bytes_ <= mostBytes)
        return;
    paths_ = {whole_};
    isFull_ = true;
}

bool EventBatch::isFull() {
    const MutexLock lock(mutex_);
    return isFull_;
}

void EventBatch::addWhole() {
    std::string whole;
    {
        const MutexLock lock(mutex_);
        whole = whole_;
    }
    add(std::move(whole));
}

void EventBatch::setWhole(std::string whole) {
    const MutexLock lock(mutex_);
    whole_ = std::move(whole);
}

void EventBatch::comeDue() {
    const MutexLock lock(mutex_);
    if (!hasEnded_)
        startTimer();
}

void EventBatch::comeDueAfter(std::chrono::nanoseconds delay) {
    const MutexLock lock(mutex_);
    workerTimers().cancel(laterTimer_);
    if (hasEnded_)
        return;
    laterTimer_ =
        workerTimers().start(TimerQueue::Clock::now() + delay, [self = shared_from_this()] {
            asio::post(workerExecutor(), [self] { self->comeDue(); });
        });
}

void EventBatch::end() {
    const MutexLock lock(mutex_);
    hasEnded_ = true;
    paths_.clear();
    workerTimers().cancel(timer_);
    workerTimers().cancel(laterTimer_);
}

void EventBatch::startTimer() {
    if (std::exchange(isTimerRunning_, true))
        return;
    timer_ = workerTimers().start(TimerQueue::Clock::now() + latency_, [self = shared_from_this()] {
        asio::post(workerExecutor(), [self] { self->latencyHasPassed(); });
    });
}

void EventBatch::latencyHasPassed() {
    {
        const MutexLock lock(mutex_);
        isDue_ = true;
        if (!isReady())
            return;
    }
    whenDue_();
}

void EventBatch::handOver() {
    const MutexLock lock(mutex_);
    if (!isReady())
        return;
    isDue_ = false;
    isTimerRunning_ = false;
    isFull_ = false;
    bytes_ = 0;
    if (paths_.empty())
        return;
    isCalling_ = true;
    queue_.async(
        [self = shared_from_this(), paths = std::exchange(paths_, {})] { self->call(paths); });
}

void EventBatch::call(const Paths& paths) {
    const auto hasEnded = [this] {
        const MutexLock lock(mutex_);
        return hasEnded_;
    };
    if (!hasEnded())
        callback_(std::vector<std::string>(paths.begin(), paths.end()));
    const MutexLock lock(mutex_);
    isCalling_ = false;
    if (isReady())
        asio::post(workerExecutor(), [self = shared_from_this()] { self->whenDue_(); });
}

} // namespace Platform
