#pragma once

#include "Platform/Linux/Bus/BusConnection.h"
#include "Platform/Mutex.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Platform {

/// The process's one connection to a message bus: made when first needed, and anew when the bus has
/// gone, or the environment has come to name another. Callable on any thread.
class SharedBus {
public:
    static SharedBus& session();
    static SharedBus& system();

    /// The function gives the address where the bus is at present; empty: nowhere.
    explicit SharedBus(std::string (*findAddress)());

    /// The task runs on the queue when the connection stands, with null where there is no bus or
    /// none that takes it within 5 seconds. Who asks later has it tried again.
    void whenConnected(const DispatchQueue& queue,
                       std::function<void(std::shared_ptr<BusConnection> connection)> task);

    /// Likewise for a bus that is on its way, as when a session starts: while the environment names
    /// one that does not take the connection, it is tried again every second until the deadline.
    void whenThere(const DispatchQueue& queue, BusDeadline deadline,
                   std::function<void(std::shared_ptr<BusConnection> connection)> task);

    /// The same for a caller that waits for it until the deadline; not on the buses' thread.
    std::shared_ptr<BusConnection> connectAndWait(BusDeadline deadline);

private:
    using Handler = std::function<void(const std::shared_ptr<BusConnection>& connection)>;

    void request(const Handler& handler) CORBEL_EXCLUDES(mutex_);
    void beginAttempt(const std::string& address) CORBEL_REQUIRES(mutex_);
    void end(std::uint64_t attempt, const std::shared_ptr<BusConnection>& connection)
        CORBEL_EXCLUDES(mutex_);

    std::string (*const findAddress_)();
    Mutex mutex_;
    std::string address_ CORBEL_GUARDED_BY(mutex_);
    std::shared_ptr<BusConnection> connection_ CORBEL_GUARDED_BY(mutex_); // null: none yet
    std::uint64_t attempt_ CORBEL_GUARDED_BY(mutex_) = 0;
    std::vector<Handler> waiting_ CORBEL_GUARDED_BY(mutex_); // for the attempt that is under way
};

} // namespace Platform
