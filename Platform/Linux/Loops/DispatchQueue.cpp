#include "Platform/DispatchQueue.h"

#include "Platform/Linux/Loops/BlockingThreads.h"
#include "Platform/Linux/Loops/MainContext.h"
#include "Platform/Linux/Loops/WorkerPool.h"
#include "Platform/NeverDestroyed.h"

#include <asio/post.hpp>
#include <asio/strand.hpp>

#include <algorithm>
#include <utility>

namespace Platform {
namespace {

// Beyond this a timer's clock would overflow; nobody waits for a century.
constexpr auto longestDelay = std::chrono::hours(24 * 365 * 100);

} // namespace

class DispatchQueue::Impl {
public:
    using Send = std::function<void(Task task)>;

    /// `send` has a task run on some thread; null: on the main thread.
    Impl(std::string label, Send send)
        : label_(std::move(label))
        , send_(std::move(send)) {}

    const std::string& label() const { return label_; }

    void async(Task task) const {
        if (send_) {
            send_(std::move(task));
        } else {
            MainContext::invoke(std::move(task));
        }
    }

    void asyncAfter(std::chrono::nanoseconds delay, Task task) const {
        if (!send_) {
            MainContext::invokeAfter(delay, std::move(task));
            return;
        }
        workerTimers().start(TimerQueue::Clock::now() + delay,
                             [send = send_, task = std::move(task)] { send(task); });
    }

private:
    const std::string label_;
    const Send send_;
};

DispatchQueue::DispatchQueue(std::shared_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

DispatchQueue DispatchQueue::concurrent(std::string label) {
    return DispatchQueue(std::make_shared<Impl>(
        std::move(label), [](Task task) { asio::post(workerExecutor(), std::move(task)); }));
}

DispatchQueue DispatchQueue::serial(std::string label) {
    return DispatchQueue(std::make_shared<Impl>(
        std::move(label), [strand = asio::make_strand(workerExecutor())](Task task) {
            asio::post(strand, std::move(task));
        }));
}

DispatchQueue DispatchQueue::blocking(std::string label) {
    return DispatchQueue(std::make_shared<Impl>(
        std::move(label), [](Task task) { BlockingThreads::shared().start(std::move(task)); }));
}

DispatchQueue DispatchQueue::serialBlocking(std::string label) {
    return DispatchQueue(std::make_shared<Impl>(
        std::move(label), [sequence = std::make_shared<BlockingSequence>()](Task task) {
            sequence->add(std::move(task));
        }));
}

DispatchQueue DispatchQueue::main() {
    static const NeverDestroyed<DispatchQueue> queue(
        DispatchQueue(std::make_shared<Impl>("com.tarnwell.main-thread", nullptr)));
    return queue.get();
}

const std::string& DispatchQueue::label() const {
    return impl_->label();
}

void DispatchQueue::async(Task task) const {
    impl_->async(std::move(task));
}

void DispatchQueue::asyncAfter(std::chrono::nanoseconds delay, Task task) const {
    impl_->asyncAfter(
        std::clamp<std::chrono::nanoseconds>(delay, std::chrono::nanoseconds::zero(), longestDelay),
        std::move(task));
}

} // namespace Platform
