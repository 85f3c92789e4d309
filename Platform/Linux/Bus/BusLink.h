#pragma once

#include "Platform/Expected.h"
#include "Platform/Linux/Bus/BusArrival.h"
#include "Platform/Linux/Bus/BusMessage.h"
#include "Platform/Linux/Bus/BusSocket.h"
#include "Platform/Linux/Bus/SDBus.h"

#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Platform {

/// A connection as it is on the buses' thread, where all of it but `post` and `isClosed` is
/// called, and all handlers run.
class BusLink : public std::enable_shared_from_this<BusLink> {
public:
    struct Call {
        BusMethod method;
        BusArguments arguments;
        BusDeadline deadline;
        std::function<void(BusReply reply)> handler;
    };

    using Opened = std::function<void(std::optional<Error> error)>;
    using SignalHandler = std::function<void(BusSignal signal)>;
    using CallHandler = std::function<void(BusCall call)>;
    using ClosedHandler = std::function<void(const std::string& reason)>;

    explicit BusLink(bool isToBus)
        : isToBus_(isToBus) {}

    /// Has the task done on the buses' thread. Tasks run in the order of the calls. Any thread.
    void post(std::function<void(BusLink& link)> task);

    /// Any thread.
    bool isClosed() const { return isClosed_; }

    /// For a subscription. Any thread.
    static std::uint64_t newNumber();

    void open(const std::string& address, BusDeadline deadline, Opened handler);
    void call(Call call);
    void subscribe(std::uint64_t number, const BusSignalRule& rule, SignalHandler handler);
    void unsubscribe(std::uint64_t number);
    void serve(BusService service, CallHandler handler);
    void answer(std::uint64_t number, const BusAnswer& answer);
    void whenClosed(ClosedHandler handler);

    /// Ends all calls; nobody is notified of the end.
    void close();

private:
    /// A call, or a subscription, as sd-bus comes back to it.
    struct Target {
        BusLink* link;
        std::uint64_t number;
        SDBus::SlotPtr slot = nullptr;
    };

    struct PendingCall {
        Call call;
        std::unique_ptr<Target> target;
    };

    struct Subscription {
        std::string sender; // as in its rule
        SignalHandler handler;
        std::unique_ptr<Target> target;
    };

    struct Served {
        BusService service;
        CallHandler handler;
        SDBus::SlotPtr slot;
    };

    static int receive(sd_bus_message* message, void* target, sd_bus_error* error) noexcept;
    static int receiveCall(sd_bus_message* message, void* link, sd_bus_error* error) noexcept;

    void openNextPlace(std::string reason);
    BusSocket::Handlers socketHandlers();
    int send(const Call& call, Target& target);
    bool takeArrivals();
    bool take(BusArrival& arrival);
    bool takeReply(BusArrival& arrival, PendingCall& pending);
    bool takeSignal(BusArrival& arrival, const Subscription& subscription);
    bool takeCall(BusArrival& arrival);
    void end(const std::string& reason);

    const bool isToBus_;
    std::atomic<bool> isClosed_ = false;
    std::deque<std::string> places_; // not tried yet
    BusDeadline deadline_;           // of the opening
    Opened opened_;                  // while it is under way
    std::shared_ptr<BusSocket> socket_;
    std::map<std::uint64_t, PendingCall> calls_;
    std::map<std::uint64_t, Subscription> subscriptions_;
    std::unique_ptr<Served> served_;
    std::map<std::uint64_t, SDBus::MessagePtr> unanswered_; // calls of what is served
    std::deque<BusArrival> arrivals_;
    std::vector<ClosedHandler> closedHandlers_;
};

} // namespace Platform
