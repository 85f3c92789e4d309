#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/FileSystemEventStream.h"

#include <asio/steady_timer.hpp>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>

namespace Platform {

/// Collects the paths of one stream and hands them to its call-back: when the latency has passed
/// since the first of a batch, and when the call-back has returned from the batch before. Callable
/// on any thread.
class EventBatch : public std::enable_shared_from_this<EventBatch> {
public:
    /// `whole` stands for the whole tree. `beforeHandingOver` runs on a worker thread when the
    /// latency has passed and may still add paths.
    EventBatch(DispatchQueue queue, std::chrono::nanoseconds latency, std::string whole,
               FileSystemEventStream::Callback callback, std::function<void()> beforeHandingOver);

    void add(std::string path);
    void addWhole();

    /// No call-back begins any more.
    void end();

private:
    using Paths = std::unordered_set<std::string>;

    // Under the mutex:
    void startTimer();
    void handOverIfDue();

    void latencyHasPassed();
    void call(const Paths& paths);

    const DispatchQueue queue_;
    const std::chrono::nanoseconds latency_;
    const std::string whole_;
    const FileSystemEventStream::Callback callback_;
    const std::function<void()> beforeHandingOver_;

    std::mutex mutex_; // guards all that follows
    asio::steady_timer timer_;
    Paths paths_;
    bool isFull_ = false; // `whole_` alone stands for all of the batch
    bool isTimerRunning_ = false;
    bool isDue_ = false;
    bool isCalling_ = false;
    bool hasEnded_ = false;
};

} // namespace Platform
