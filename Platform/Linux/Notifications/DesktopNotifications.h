#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Linux/Bus/BusNames.h"
#include "Platform/Linux/Notifications/NotificationAnswers.h"
#include "Platform/Linux/Notifications/NotificationMessage.h"
#include "Platform/Linux/Notifications/NotificationQueue.h"
#include "Platform/UserNotificationCenter.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Platform {

/// Has the session's notification service show notifications, and takes the user's answers
/// (freedesktop Desktop Notifications 1.2). The service is started where the bus can start it; it
/// may be slow to start or to answer, vanish, come back and refuse at any time: what waits is
/// delivered when it is there. Where the session has none, the terminal shows them. Lives as long
/// as the process; everything here runs on the one serial queue given to it.
class DesktopNotifications {
public:
    /// Called once with what became of a request: nothing when it was shown, or a later one of its
    /// identifier took its place; why not, when the service refused it.
    using Completion = std::function<void(std::optional<Error> error)>;

    DesktopNotifications(DispatchQueue queue, NotificationAnswers::Handler answerHandler);

    /// Requests of one identifier reach the service one after the other, so that each can replace
    /// the one before it.
    void deliver(NotificationRequest request, std::vector<NotificationAction> actions,
                 Completion completion);

    /// For a process that is about to end: the completion is called when nothing waits for the
    /// service any more, neither to be sent to it nor for its answer.
    void finish(std::function<void()> completion);

    /// When the process can wait for that no longer: sends what waits, unanswered, or leaves it to
    /// the terminal. The completion is called when the bus has it.
    void giveUp(std::function<void()> completion);

private:
    struct Delivery {
        std::uint64_t number; // the turn
        NotificationRequest request;
        std::vector<NotificationAction> actions;
        Completion completion;
        bool wasRetried = false;
    };

    using ReplyHandler = std::function<void(const BusReply& reply)>;

    void wait(Delivery delivery);
    void proceed();
    void connect();
    BusDeadline expectedBy();
    void startService();
    void awaitOwner(BusDeadline deadline);
    void findOwner();
    void setOwner(const std::string& owner);
    void askCapabilities();
    void sendWaiting();
    void send(Delivery delivery);
    void endDelivery(Delivery& delivery, const std::string& owner, const BusReply& reply);
    void retry(Delivery delivery);
    void leaveWaitingToTerminal();

    void ask(BusMethod method, BusArguments arguments, BusDeadline deadline, ReplyHandler handler);
    void call(BusMethod method, BusArguments arguments, BusDeadline deadline, ReplyHandler handler);
    BusMethod serviceMethod(std::string name, std::string replyType) const;

    const DispatchQueue queue_;

    std::shared_ptr<BusConnection> bus_; // null: none, or not connected yet
    std::unique_ptr<BusNameWatch> nameWatch_;
    std::optional<BusDeadline> expectedBy_; // a service, while there is none

    std::string owner_; // the unique name behind the service's name; empty: none known
    std::unique_ptr<BusSubscription> ownerSignals_;
    std::optional<NotificationCapabilities> capabilities_; // of the owner
    bool areCapabilitiesKnown_ = false; // false: they are assumed, for want of an answer
    NotificationAnswers answers_;       // to what the owner was given

    // One question at a time stands between what waits and the service. A new owner makes it stale.
    bool isAsking_ = false;
    std::uint64_t question_ = 0;

    NotificationQueue<std::uint64_t, Delivery> waiting_;
    std::uint64_t lastNumber_ = 0;
    std::set<std::string, std::less<>> identifiersInFlight_;
    std::size_t callsInFlight_ = 0;
    std::function<void()> finished_; // the completion of `finish`, until it is called
};

} // namespace Platform
