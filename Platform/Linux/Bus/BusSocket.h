#pragma once

#include "Platform/Expected.h"
#include "Platform/Linux/Bus/BusMessage.h"
#include "Platform/Linux/Bus/SDBus.h"
#include "Platform/Linux/Loops/TimerQueue.h"

#include <asio/posix/stream_descriptor.hpp>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Platform {

/// Keeps one of libsystemd's connections going: waits for its socket and its times, in turns short
/// enough that others on the thread get theirs. Made, used and dropped on the buses' thread;
/// dropping it, which its own handlers may do, closes the connection.
class BusSocket : public std::enable_shared_from_this<BusSocket> {
public:
    struct Handlers {
        std::function<void()> ready; ///< authenticated, and known to the bus
        /// Takes what has arrived; false when there is more of it than one turn should take.
        std::function<bool()> take;
        std::function<void(const std::string& reason)> lost; ///< once, and nothing after it
    };

    /// Begins to connect.
    static Expected<std::shared_ptr<BusSocket>> connect(const std::string& place, bool isToBus,
                                                        BusDeadline deadline, Handlers handlers);

    BusSocket(SDBus::BusPtr bus, int descriptor, BusDeadline deadline, Handlers handlers);

    sd_bus* bus() const { return bus_.get(); }

    /// After everything that was done to the connection from outside.
    void resume();

    /// No handler is called any more.
    void close();

private:
    void turn();
    bool proceed();
    void turnLater();
    void await();
    void awaitDescriptor(asio::posix::stream_descriptor::wait_type kind, bool& isAwaited);
    void awaitTime();
    void lose();

    SDBus::BusPtr bus_;
    // Of the socket again, so that no number of a closed one is ever waited for.
    asio::posix::stream_descriptor descriptor_;
    TimerQueue::Number timer_;
    BusDeadline deadline_; // of the connecting
    Handlers handlers_;
    bool isReady_ = false;
    std::optional<std::string> end_; // has come, and why; reported when all before it was taken
    bool isTurnDue_ = false;
    bool isReadAwaited_ = false;
    bool isWriteAwaited_ = false;
};

} // namespace Platform
