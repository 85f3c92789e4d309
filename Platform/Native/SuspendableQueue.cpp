#include "Platform/Native/SuspendableQueue.h"

#include <utility>

namespace Platform {

SuspendableQueue::SuspendableQueue(std::string label)
    : queue_(DispatchQueue::serial(std::move(label))) {}

void SuspendableQueue::async(Task task) {
    const MutexLock lock(mutex_);
    tasks_.push_back(std::move(task));
    wake();
}

void SuspendableQueue::suspend() {
    const MutexLock lock(mutex_);
    if (!isOpen_)
        ++suspensions_;
}

bool SuspendableQueue::resume() {
    const MutexLock lock(mutex_);
    if (suspensions_ > 0)
        --suspensions_;
    wake();
    return suspensions_ == 0;
}

void SuspendableQueue::open() {
    const MutexLock lock(mutex_);
    isOpen_ = true;
    suspensions_ = 0;
    wake();
}

void SuspendableQueue::wake() {
    if (isRunning_ || suspensions_ > 0 || tasks_.empty())
        return;
    isRunning_ = true;
    queue_.async([self = shared_from_this()] { self->run(); });
}

void SuspendableQueue::run() {
    while (const auto task = next())
        (*task)();
}

std::optional<SuspendableQueue::Task> SuspendableQueue::next() {
    const MutexLock lock(mutex_);
    isRunning_ = suspensions_ == 0 && !tasks_.empty();
    if (!isRunning_)
        return std::nullopt;
    auto task = std::move(tasks_.front());
    tasks_.pop_front();
    return task;
}

} // namespace Platform
