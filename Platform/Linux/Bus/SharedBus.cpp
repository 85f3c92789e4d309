#include "Platform/Linux/Bus/SharedBus.h"

#include "Platform/Linux/Bus/BusAddress.h"
#include "Platform/NeverDestroyed.h"

#include <future>
#include <utility>

namespace Platform {

SharedBus& SharedBus::session() {
    static const NeverDestroyed<SharedBus> bus(sessionBusAddress);
    return bus.get();
}

SharedBus& SharedBus::system() {
    static const NeverDestroyed<SharedBus> bus(systemBusAddress);
    return bus.get();
}

SharedBus::SharedBus(std::string (*findAddress)())
    : findAddress_(findAddress) {}

void SharedBus::whenConnected(const DispatchQueue& queue,
                              std::function<void(std::shared_ptr<BusConnection>)> task) {
    request([queue, task = std::move(task)](const auto& connection) {
        queue.async([task, connection] { task(connection); });
    });
}

void SharedBus::whenThere(const DispatchQueue& queue, BusDeadline deadline,
                          std::function<void(std::shared_ptr<BusConnection>)> task) {
    whenConnected(queue, [this, queue, deadline, task = std::move(task)](auto connection) {
        constexpr auto interval = std::chrono::seconds(1);
        if (connection || findAddress_().empty() || BusClock::now() + interval > deadline) {
            task(std::move(connection));
        } else {
            queue.asyncAfter(interval, [=, this] { whenThere(queue, deadline, task); });
        }
    });
}

std::shared_ptr<BusConnection> SharedBus::connectAndWait(BusDeadline deadline) {
    const auto promise = std::make_shared<std::promise<std::shared_ptr<BusConnection>>>();
    auto connection = promise->get_future();
    request([promise](const auto& made) { promise->set_value(made); });
    const bool isThere = connection.wait_until(deadline) == std::future_status::ready;
    return isThere ? connection.get() : nullptr;
}

void SharedBus::request(const Handler& handler) {
    const auto address = findAddress_();
    std::shared_ptr<BusConnection> connection;
    std::vector<Handler> outdated; // answered when the lock is free
    bool isWaiting = false;
    {
        const MutexLock lock(mutex_);
        if (address != address_) {
            address_ = address;
            connection_.reset();
            ++attempt_; // one that is under way leads to the wrong bus
            outdated.swap(waiting_);
        }
        isWaiting = !address.empty() && (!connection_ || connection_->isClosed());
        if (isWaiting) {
            connection_.reset();
            waiting_.push_back(handler);
            if (waiting_.size() == 1)
                beginAttempt(address);
        }
        connection = connection_;
    }
    for (const auto& other : outdated)
        other(nullptr);
    if (!isWaiting)
        handler(connection);
}

void SharedBus::beginAttempt(const std::string& address) {
    constexpr auto patience = std::chrono::seconds(5);
    BusConnection::connect(address, BusConnection::Peer::bus, busDeadlineIn(patience),
                           [this, attempt = ++attempt_](auto connection) {
                               end(attempt, connection ? std::move(*connection) : nullptr);
                           });
}

void SharedBus::end(std::uint64_t attempt, const std::shared_ptr<BusConnection>& connection) {
    std::vector<Handler> waiting;
    {
        const MutexLock lock(mutex_);
        if (attempt != attempt_)
            return; // to a bus that nobody asks for any more
        connection_ = connection;
        waiting.swap(waiting_);
    }
    for (const auto& handler : waiting)
        handler(connection);
}

} // namespace Platform
