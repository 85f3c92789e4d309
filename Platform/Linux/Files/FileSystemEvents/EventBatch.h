#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/FileSystemEventStream.h"
#include "Platform/Linux/Loops/TimerQueue.h"
#include "Platform/Mutex.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <unordered_set>

namespace Platform {

/// Collects the paths of one stream and hands them to its call-back: when the latency has passed
/// since the first of a batch, when the call-back has returned from the batch before, and when the
/// owner has then looked at what may be wanting. Callable on any thread.
class EventBatch : public std::enable_shared_from_this<EventBatch> {
public:
    /// `whole` stands for the whole tree. `whenDue` runs on a worker thread; it may still add paths
    /// and ends with `handOver`.
    EventBatch(DispatchQueue queue, std::chrono::nanoseconds latency, std::string whole,
               FileSystemEventStream::Callback callback, std::function<void()> whenDue);

    void add(std::string path);
    void addWhole();
    void setWhole(std::string whole);

    /// Whether it says to look at everything, so that no path adds to it.
    bool isFull();

    /// Comes due even if there is no path to hand over so far.
    void comeDue();

    /// The same, after the delay, in place of an earlier one.
    void comeDueAfter(std::chrono::nanoseconds delay);

    /// What there is of a batch that is due, if anything.
    void handOver();

    /// No call-back begins any more.
    void end();

private:
    using Paths = std::unordered_set<std::string>;

    void startTimer() CORBEL_REQUIRES(mutex_);

    bool isReady() CORBEL_REQUIRES(mutex_) { return isDue_ && !isCalling_ && !hasEnded_; }

    void latencyHasPassed();
    void call(const Paths& paths);

    const DispatchQueue queue_;
    const std::chrono::nanoseconds latency_;
    const FileSystemEventStream::Callback callback_;
    const std::function<void()> whenDue_;

    Mutex mutex_;
    TimerQueue::Number timer_ CORBEL_GUARDED_BY(mutex_);
    TimerQueue::Number laterTimer_ CORBEL_GUARDED_BY(mutex_);
    std::string whole_ CORBEL_GUARDED_BY(mutex_);
    Paths paths_ CORBEL_GUARDED_BY(mutex_);
    std::size_t bytes_ CORBEL_GUARDED_BY(mutex_) = 0; // of the paths
    bool isFull_ CORBEL_GUARDED_BY(mutex_) = false;   // `whole_` alone stands for all of the batch
    bool isTimerRunning_ CORBEL_GUARDED_BY(mutex_) = false;
    bool isDue_ CORBEL_GUARDED_BY(mutex_) = false;
    bool isCalling_ CORBEL_GUARDED_BY(mutex_) = false;
    bool hasEnded_ CORBEL_GUARDED_BY(mutex_) = false;
};

} // namespace Platform
