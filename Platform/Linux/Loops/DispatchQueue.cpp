#include "Platform/DispatchQueue.h"

#include "Platform/Linux/Loops/BlockingThreads.h"
#include "Platform/Linux/Loops/MainContext.h"
#include "Platform/Linux/Loops/WorkerPool.h"
#include "Platform/NeverDestroyed.h"

#include <asio/post.hpp>
#include <asio/steady_timer.hpp>
#include <asio/strand.hpp>

#include <algorithm>
#include <atomic>
#include <semaphore>
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
        } else if (threads_ == Threads::ownForEachTask) {
            BlockingThreads::shared().start(std::move(task));
        } else {
            asio::post(executor_, std::move(task));
        }
    }

    void asyncAfter(std::chrono::nanoseconds delay, Task task) const {
        if (isMain()) {
            MainContext::invokeAfter(delay, std::move(task));
            return;
        }
        auto timer = std::make_shared<asio::steady_timer>(executor_, delay);
        if (threads_ == Threads::ownForEachTask)
            task = [task = std::move(task)] { BlockingThreads::shared().start(task); };
        timer->async_wait([timer, task = std::move(task)](const auto&) { task(); });
    }

private:
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

namespace {

// One call of `apply`: the caller and the workers that come in time take indices from it.
class Iterations {
public:
    Iterations(std::size_t count, const std::function<void(std::size_t)>& body)
        : count_(count)
        , body_(body) {}

    void takeAll() noexcept {
        for (auto index = next_++; index < count_; index = next_++) {
            body_(index);
            if (++ended_ == count_)
                allEnded_.release();
        }
    }

    void wait() { allEnded_.acquire(); }

private:
    const std::size_t count_;
    const std::function<void(std::size_t)>& body_; // alive while an index is left to take
    std::atomic<std::size_t> next_ = 0;
    std::atomic<std::size_t> ended_ = 0;
    std::binary_semaphore allEnded_{0};
};

} // namespace

void DispatchQueue::apply(std::size_t count, const std::function<void(std::size_t)>& body) {
    if (count == 0)
        return;
    auto iterations = std::make_shared<Iterations>(count, body);
    const auto assistants = std::min<std::size_t>(count - 1, workerCount());
    for (std::size_t assistant = 0; assistant < assistants; ++assistant)
        asio::post(workerExecutor(), [iterations] { iterations->takeAll(); });
    iterations->takeAll();
    iterations->wait();
}

} // namespace Platform
