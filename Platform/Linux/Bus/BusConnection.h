#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Expected.h"
#include "Platform/Linux/Bus/BusMessage.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Platform {

class BusLink;

/// Signals that are listened to. Dropping it ends that: once it is dropped, none that comes on the
/// same serial queue is handed out any more. For one thread at a time.
class BusSubscription {
public:
    BusSubscription(std::shared_ptr<BusLink> link, std::uint64_t number,
                    std::shared_ptr<const bool> token);
    ~BusSubscription();
    BusSubscription(const BusSubscription&) = delete;
    BusSubscription& operator=(const BusSubscription&) = delete;
    BusSubscription(BusSubscription&&) = delete;
    BusSubscription& operator=(BusSubscription&&) = delete;

private:
    const std::shared_ptr<BusLink> link_;
    const std::uint64_t number_;
    const std::shared_ptr<const bool> token_; // whoever hands signals out looks whether it lives
};

/// One connection to a message bus, or to a process that listens itself. Bound to no main loop;
/// all operations may be called on any thread, and only those that say so wait. Answers, signals
/// and the end come in the order in which they came. Closed when the object goes.
class BusConnection {
public:
    enum class Peer : std::uint8_t { bus, process };

    /// Handlers run on the buses' own thread, where nothing may wait.
    using Connected = std::function<void(Expected<std::shared_ptr<BusConnection>> connection)>;
    using Replied = std::function<void(BusReply reply)>;

    /// Connects to the first of the address's places that takes it. Without a deadline it may be
    /// tried for some minutes.
    static void connect(const std::string& address, Peer peer, BusDeadline deadline,
                        Connected handler);

    explicit BusConnection(std::shared_ptr<BusLink> link);
    ~BusConnection();
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    BusConnection(BusConnection&&) = delete;
    BusConnection& operator=(BusConnection&&) = delete;

    /// @{
    /// Every call ends: by its answer, its deadline or the connection's end.
    void call(BusMethod method, BusArguments arguments, BusDeadline deadline, Replied handler);
    void call(BusMethod method, BusArguments arguments, BusDeadline deadline,
              const DispatchQueue& queue, Replied completion);
    /// @}

    /// Waits for the end of the call. Not for a handler, which would wait for itself.
    BusReply callAndWait(BusMethod method, BusArguments arguments, BusDeadline deadline);

    /// Signals that the connection receives from now on.
    [[nodiscard]] std::unique_ptr<BusSubscription>
    subscribe(BusSignalRule rule, const DispatchQueue& queue,
              std::function<void(BusSignal signal)> task);

    /// Takes the calls that come to the service from now on, as long as the connection lives; once.
    /// The handler runs on the buses' own thread, where nothing may wait.
    void serve(BusService service, std::function<void(BusCall call)> handler);

    /// Once for each call; what comes later does nothing.
    void answer(std::uint64_t number, BusAnswer answer);

    /// The task runs once, when the other end has closed the connection; perhaps it has already.
    void whenClosed(const DispatchQueue& queue, std::function<void(std::string reason)> task);

    bool isClosed() const;

private:
    const std::shared_ptr<BusLink> link_;
};

/// The moment that is so far away.
inline BusDeadline busDeadlineIn(BusClock::duration patience) {
    return BusClock::now() + patience;
}

} // namespace Platform
