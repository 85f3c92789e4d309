#include "Platform/DispatchQueue.h"

#include "Platform/Linux/MainContext.h"
#include "Platform/Linux/WorkerPool.h"
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

class DispatchQueue::Impl : public std::enable_shared_from_this<Impl> {
public:
    enum class Kind { main, worker };

    Impl(std::string label, Kind kind, asio::any_io_executor executor)
        : label_(std::move(label))
        , kind_(kind)
        , executor_(std::move(executor)) {}

    const std::string& label() const { return label_; }

    bool isCurrent() const { return current == this; }

    void async(Task task) const {
        if (kind_ == Kind::main) {
            MainContext::invoke(bound(std::move(task)));
        } else {
            asio::post(executor_, bound(std::move(task)));
        }
    }

    void asyncAfter(std::chrono::nanoseconds delay, Task task) const {
        if (kind_ == Kind::main) {
            MainContext::invokeAfter(delay, bound(std::move(task)));
            return;
        }
        auto timer = std::make_shared<asio::steady_timer>(executor_, delay);
        timer->async_wait([timer, task = bound(std::move(task))](const auto&) { task(); });
    }

private:
    // The task, with this queue as the current one while it runs.
    Task bound(Task task) const {
        return [self = shared_from_this(), task = std::move(task)]() noexcept {
            const auto* outer = std::exchange(current, self.get());
            task();
            current = outer;
        };
    }

    static thread_local const Impl* current;

    const std::string label_;
    const Kind kind_;
    const asio::any_io_executor executor_; // a strand where the queue is serial
};

thread_local const DispatchQueue::Impl* DispatchQueue::Impl::current = nullptr;

DispatchQueue::DispatchQueue(std::shared_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

DispatchQueue DispatchQueue::concurrent(std::string label) {
    return DispatchQueue(
        std::make_shared<Impl>(std::move(label), Impl::Kind::worker, workerExecutor()));
}

DispatchQueue DispatchQueue::serial(std::string label) {
    return DispatchQueue(std::make_shared<Impl>(std::move(label), Impl::Kind::worker,
                                                asio::make_strand(workerExecutor())));
}

DispatchQueue DispatchQueue::main() {
    static const NeverDestroyed<DispatchQueue> queue(DispatchQueue(std::make_shared<Impl>(
        "com.tarnwell.main-thread", Impl::Kind::main, asio::any_io_executor())));
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

bool DispatchQueue::isCurrent() const {
    return impl_->isCurrent();
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
