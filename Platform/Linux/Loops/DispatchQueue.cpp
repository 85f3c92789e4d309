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
    enum class Threads { workers, ownForEachTask };

    Impl(std::string label, asio::any_io_executor executor, Threads threads = Threads::workers)
        : label_(std::move(label))
        , executor_(std::move(executor))
        , threads_(threads) {}

    const std::string& label() const { return label_; }

    void async(Task task) const {
        if (isMain()) {
            MainContext::invoke(std::move(task));
        } else {
            send(executor_, threads_, std::move(task));
        }
    }

    void asyncAfter(std::chrono::nanoseconds delay, Task task) const {
        if (isMain()) {
            MainContext::invokeAfter(delay, std::move(task));
            return;
        }
        workerTimers().start(TimerQueue::Clock::now() + delay,
                             [executor = executor_, threads = threads_, task = std::move(task)] {
                                 send(executor, threads, task);
                             });
    }

private:
    static void send(const asio::any_io_executor& executor, Threads threads, Task task) {
        if (threads == Threads::ownForEachTask) {
            BlockingThreads::shared().start(std::move(task));
        } else {
            asio::post(executor, std::move(task));
        }
    }

    bool isMain() const { return !executor_; }

    const std::string label_;
    const asio::any_io_executor executor_; // a strand where the queue is serial, none for the main
    const Threads threads_;
};

DispatchQueue::DispatchQueue(std::shared_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

DispatchQueue DispatchQueue::concurrent(std::string label) {
    return DispatchQueue(std::make_shared<Impl>(std::move(label), workerExecutor()));
}

DispatchQueue DispatchQueue::serial(std::string label) {
    return DispatchQueue(
        std::make_shared<Impl>(std::move(label), asio::make_strand(workerExecutor())));
}

DispatchQueue DispatchQueue::blocking(std::string label) {
    return DispatchQueue(
        std::make_shared<Impl>(std::move(label), workerExecutor(), Impl::Threads::ownForEachTask));
}

DispatchQueue DispatchQueue::main() {
    static const NeverDestroyed<DispatchQueue> queue(
        DispatchQueue(std::make_shared<Impl>("com.tarnwell.main-thread", asio::any_io_executor())));
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
