#include "Platform/Linux/Notifications/DesktopNotifications.h"

#include "Platform/Linux/Bus/BusWriter.h"
#include "Platform/Linux/Bus/SharedBus.h"
#include "Platform/Linux/Desktop/DesktopSession.h"
#include "Platform/Linux/Notifications/TerminalNotifications.h"

#include <algorithm>
#include <utility>

namespace Platform {
namespace {

constexpr auto serviceName = "org.freedesktop.Notifications";
constexpr auto servicePath = "/org/freedesktop/Notifications";
constexpr std::size_t mostCallsInFlight = 16;
constexpr auto serviceUnknown = "org.freedesktop.DBus.Error.ServiceUnknown";

// With a service, or a bus, that is on its way or does not answer: longer than the slowest desktop
// takes to start, and than a busy one stands still.
constexpr auto patience = std::chrono::seconds(150);
constexpr auto shortPatience = std::chrono::seconds(5); // once that has passed in vain

bool hasGone(const BusReply& reply) {
    return reply.outcome == BusReply::Outcome::gone || reply.outcome == BusReply::Outcome::closed;
}

} // namespace

DesktopNotifications::DesktopNotifications(DispatchQueue queue,
                                           NotificationAnswers::Handler answerHandler)
    : queue_(std::move(queue))
    , answers_(std::move(answerHandler)) {}

void DesktopNotifications::deliver(NotificationRequest request,
                                   std::vector<NotificationAction> actions, Completion completion) {
    wait({.number = ++lastNumber_,
          .request = std::move(request),
          .actions = std::move(actions),
          .completion = std::move(completion)});
    if (!areCapabilitiesKnown_)
        capabilities_.reset();
    proceed();
}

void DesktopNotifications::wait(Delivery delivery) {
    const auto number = delivery.number;
    if (const auto earlier = waiting_.add(number, std::move(delivery)))
        earlier->completion(std::nullopt);
}

void DesktopNotifications::finish(std::function<void()> completion) {
    finished_ = std::move(completion);
    proceed();
}

void DesktopNotifications::giveUp(std::function<void()> completion) {
    if (owner_.empty() || !capabilities_) {
        leaveWaitingToTerminal();
        completion();
        return;
    }
    for (auto& [number, delivery] : waiting_.takeAll())
        send(std::move(delivery));
    bus_->call(busDriverMethod("GetId", "s"), nullptr,
               busDeadlineIn(std::chrono::milliseconds(100)), queue_,
               [completion = std::move(completion)](const auto&) { completion(); });
}

// The next step towards a service that can take what waits.
void DesktopNotifications::proceed() {
    if (waiting_.isEmpty()) {
        if (callsInFlight_ == 0 && finished_)
            std::exchange(finished_, {})();
        return;
    }
    if (isAsking_ || callsInFlight_ >= mostCallsInFlight)
        return;
    if (!bus_ || bus_->isClosed()) {
        connect();
    } else if (owner_.empty()) {
        startService();
    } else if (!capabilities_) {
        askCapabilities();
    } else {
        sendWaiting();
    }
}

void DesktopNotifications::connect() {
    isAsking_ = true;
    SharedBus::session().whenThere(queue_, expectedBy(), [this](const auto& bus) {
        isAsking_ = false;
        bus_ = bus;
        setOwner({});
        if (bus_) {
            nameWatch_ = std::make_unique<BusNameWatch>(
                *bus_, serviceName, queue_, [this](const std::string& owner) { setOwner(owner); });
        } else {
            leaveWaitingToTerminal();
        }
        proceed();
    });
}

// The first time that something waits for it, a service has the whole patience to come.
BusDeadline DesktopNotifications::expectedBy() {
    if (!expectedBy_)
        expectedBy_ = busDeadlineIn(patience);
    return std::max(*expectedBy_, busDeadlineIn(shortPatience));
}

// One that runs is not started again; whoever owns the name by then is news of the watch.
void DesktopNotifications::startService() {
    constexpr std::uint32_t noFlags = 0;
    const auto deadline = expectedBy();
    ask(busDriverMethod("StartServiceByName", "u"), busArguments(serviceName, noFlags), deadline,
        [this, deadline](const BusReply& reply) {
            if (reply.outcome == BusReply::Outcome::answered) {
                findOwner();
            } else if (reply.outcome == BusReply::Outcome::gone &&
                       (reply.errorName != serviceUnknown || isDesktopSession())) {
                awaitOwner(deadline);
            } else {
                leaveWaitingToTerminal();
            }
        });
}

// There is a service, though the bus could not start it, or not in its own time: the desktop may,
// or it is only slow.
void DesktopNotifications::awaitOwner(BusDeadline deadline) {
    isAsking_ = true;
    queue_.asyncAfter(deadline - BusClock::now(), [this, question = ++question_] {
        if (question != question_)
            return;
        isAsking_ = false;
        leaveWaitingToTerminal();
        proceed();
    });
}

void DesktopNotifications::findOwner() {
    ask(busDriverMethod("GetNameOwner", "s"), busArguments(serviceName),
        busDeadlineIn(shortPatience), [this](const BusReply& reply) {
            if (reply.outcome == BusReply::Outcome::answered) {
                setOwner(*reply.values[0].get<std::string>());
            } else {
                leaveWaitingToTerminal();
            }
        });
}

// The numbers and the abilities of one owner say nothing about the next.
void DesktopNotifications::setOwner(const std::string& owner) {
    if (owner == owner_)
        return;
    owner_ = owner;
    capabilities_.reset();
    answers_.clear();
    ownerSignals_.reset();
    if (!owner_.empty()) {
        expectedBy_.reset();
        ownerSignals_ =
            bus_->subscribe({.sender = owner_, .path = servicePath, .interface = serviceName},
                            queue_, [this](const BusSignal& signal) { answers_.receive(signal); });
    }
    ++question_;
    isAsking_ = false;
    proceed();
}

void DesktopNotifications::askCapabilities() {
    const auto takeAnswer = [this](const BusReply& reply) {
        areCapabilitiesKnown_ = reply.outcome == BusReply::Outcome::answered;
        if (!hasGone(reply)) {
            capabilities_ = areCapabilitiesKnown_ ? NotificationCapabilities::read(reply.values)
                                                  : NotificationCapabilities{};
            proceed();
            return;
        }
        for (auto& [number, delivery] : waiting_.takeAll())
            retry(std::move(delivery));
        setOwner({});
    };
    ask(serviceMethod("GetCapabilities", "as"), nullptr, busDeadlineIn(patience), takeAnswer);
}

void DesktopNotifications::sendWaiting() {
    for (auto next = waiting_.begin();
         next != waiting_.end() && callsInFlight_ < mostCallsInFlight;) {
        const auto place = next++;
        if (!identifiersInFlight_.contains(place->second.request.identifier))
            send(waiting_.take(place));
    }
}

void DesktopNotifications::send(Delivery delivery) {
    const auto replaced = answers_.delivered().numberShowing(delivery.request.identifier);
    const auto arguments =
        makeNotifyArguments(delivery.request, delivery.actions,
                            capabilities_.value_or(NotificationCapabilities{}), replaced);
    identifiersInFlight_.insert(delivery.request.identifier);
    answers_.begin();
    call(serviceMethod("Notify", "u"), arguments, busDeadlineIn(patience),
         [this, owner = owner_,
          delivery = std::make_shared<Delivery>(std::move(delivery))](const BusReply& reply) {
             identifiersInFlight_.erase(delivery->request.identifier);
             endDelivery(*delivery, owner, reply);
             proceed();
         });
}

void DesktopNotifications::endDelivery(Delivery& delivery, const std::string& owner,
                                       const BusReply& reply) {
    const bool isOwner = owner == owner_;
    if (reply.outcome == BusReply::Outcome::answered) {
        const auto number = static_cast<std::uint32_t>(*reply.values[0].get<std::int64_t>());
        if (isOwner)
            answers_.end(number, std::move(delivery.request));
        delivery.completion(std::nullopt);
        return;
    }
    if (isOwner)
        answers_.end(std::nullopt, {});
    if (isOwner && !hasGone(reply)) {
        delivery.completion(Error{std::string(serviceName) + ".Notify: " + reply.description});
    } else {
        retry(std::move(delivery));
        if (isOwner)
            setOwner({});
    }
}

// A service that vanished over it gets one more chance, with its successor.
void DesktopNotifications::retry(Delivery delivery) {
    const bool isReplaced = waiting_.contains(delivery.request.identifier);
    if (isReplaced || delivery.wasRetried) {
        if (!isReplaced)
            deliverToTerminal(delivery.request.content);
        delivery.completion(std::nullopt);
        return;
    }
    delivery.wasRetried = true;
    wait(std::move(delivery));
}

void DesktopNotifications::leaveWaitingToTerminal() {
    for (const auto& [number, delivery] : waiting_.takeAll()) {
        deliverToTerminal(delivery.request.content);
        delivery.completion(std::nullopt);
    }
}

// A call whose answer decides how to go on.
void DesktopNotifications::ask(BusMethod method, BusArguments arguments, BusDeadline deadline,
                               ReplyHandler handler) {
    isAsking_ = true;
    call(std::move(method), std::move(arguments), deadline,
         [this, question = ++question_, handler = std::move(handler)](const BusReply& reply) {
             if (question == question_) {
                 isAsking_ = false;
                 handler(reply);
             }
             proceed();
         });
}

void DesktopNotifications::call(BusMethod method, BusArguments arguments, BusDeadline deadline,
                                ReplyHandler handler) {
    ++callsInFlight_;
    bus_->call(std::move(method), std::move(arguments), deadline, queue_,
               [this, handler = std::move(handler)](const BusReply& reply) {
                   --callsInFlight_;
                   handler(reply);
               });
}

// Sent to the owner itself: another one may have other abilities and other numbers.
BusMethod DesktopNotifications::serviceMethod(std::string name, std::string replyType) const {
    return {.destination = owner_,
            .path = servicePath,
            .interface = serviceName,
            .name = std::move(name),
            .replyType = std::move(replyType)};
}

} // namespace Platform
