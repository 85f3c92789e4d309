#include "Platform/NeverDestroyed.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/DispatchQueueImpl.h"

#include <utility>

namespace Platform {
namespace {

using Task = DispatchQueue::Task;

void runOwnedTask(void* context) noexcept {
    const std::unique_ptr<Task> task(static_cast<Task*>(context));
    runAtBoundary(*task);
}

void* owned(Task task) {
    return std::make_unique<Task>(std::move(task)).release();
}

} // namespace

DispatchQueue::Impl::Impl(dispatch_queue_t queue)
    : queue_(queue)
    , label_(dispatch_queue_get_label(queue)) {}

DispatchQueue::DispatchQueue(std::shared_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

DispatchQueue DispatchQueue::concurrent(std::string label) {
    return DispatchQueue(
        std::make_shared<Impl>(dispatch_queue_create(label.c_str(), DISPATCH_QUEUE_CONCURRENT)));
}

DispatchQueue DispatchQueue::serial(std::string label) {
    return DispatchQueue(
        std::make_shared<Impl>(dispatch_queue_create(label.c_str(), DISPATCH_QUEUE_SERIAL)));
}

// The system makes further threads where those of a concurrent queue are held.
DispatchQueue DispatchQueue::blocking(std::string label) {
    return concurrent(std::move(label));
}

DispatchQueue DispatchQueue::serialBlocking(std::string label) {
    return serial(std::move(label));
}

DispatchQueue DispatchQueue::main() {
    static const NeverDestroyed<DispatchQueue> queue(
        DispatchQueue(std::make_shared<Impl>(dispatch_get_main_queue())));
    return queue.get();
}

const std::string& DispatchQueue::label() const {
    return impl_->label();
}

void DispatchQueue::async(Task task) const {
    dispatch_async_f(impl_->queue(), owned(std::move(task)), runOwnedTask);
}

void DispatchQueue::asyncAfter(std::chrono::nanoseconds delay, Task task) const {
    const dispatch_time_t time = dispatch_time(DISPATCH_TIME_NOW, delay.count());
    if (time !=
        DISPATCH_TIME_FOREVER) // for which the system would keep nothing, and release nothing
        dispatch_after_f(time, impl_->queue(), owned(std::move(task)), runOwnedTask);
}

} // namespace Platform
