#include "Platform/Linux/Notifications/DesktopNotifications.h"

#include "Platform/Linux/Desktop/ActivationToken.h"
#include "Platform/Linux/Notifications/TerminalNotifications.h"

#include <algorithm>
#include <utility>

namespace Platform {
namespace {

constexpr auto serviceName = "org.freedesktop.Notifications";
constexpr auto servicePath = "/org/freedesktop/Notifications";
constexpr std::size_t mostCallsInFlight = 16;

bool hasType(const GLibBusSignal& signal, const char* type) {
    return g_variant_is_of_type(signal.arguments.get(), G_VARIANT_TYPE(type)) != FALSE;
}

} // namespace

DesktopNotifications::DesktopNotifications(DispatchQueue queue, AnswerHandler answerHandler)
    : queue_(std::move(queue))
    , answerHandler_(std::move(answerHandler)) {}

void DesktopNotifications::deliver(NotificationRequest request,
                                   std::vector<NotificationAction> actions, Completion completion) {
    const auto earlier = std::ranges::find_if(waiting_, [&request](const Delivery& delivery) {
        return delivery.request.identifier == request.identifier;
    });
    if (earlier != waiting_.end()) {
        earlier->completion(std::nullopt);
        waiting_.erase(earlier);
    }
    waiting_.push_back({.number = ++lastNumber_,
                        .request = std::move(request),
                        .actions = std::move(actions),
                        .completion = std::move(completion)});
    if (!hasToldCapabilities_)
        capabilities_.reset();
    proceed();
}

// The next step towards a service that can take what waits.
void DesktopNotifications::proceed() {
    if (waiting_.empty() || isAsking_ || callsInFlight_ >= mostCallsInFlight)
        return;
    if (!isConnected_) {
        connect();
    } else if (bus_ == nullptr) {
        leaveWaitingToTerminal();
    } else if (owner_.empty()) {
        findOwner([this] { startService(); });
    } else if (!capabilities_) {
        askCapabilities();
    } else {
        sendWaiting();
    }
}

void DesktopNotifications::connect() {
    isAsking_ = true;
    SessionBus::whenConnected(queue_, [this](SessionBus* bus) {
        isAsking_ = false;
        isConnected_ = true;
        bus_ = bus;
        if (bus_ != nullptr) {
            const auto driver = glibBusDriverMethod({}, {});
            const GLibBusSignalRule rule{.sender = driver.destination,
                                         .path = driver.path,
                                         .interface = driver.interface,
                                         .firstArgument = serviceName,
                                         .name = "NameOwnerChanged"};
            ownerChanges_ = bus_->subscribe(rule, queue_, [this](const GLibBusSignal& signal) {
                const char* newOwner = nullptr;
                if (hasType(signal, "(sss)"))
                    g_variant_get(signal.arguments.get(), "(&s&s&s)", nullptr, nullptr, &newOwner);
                if (newOwner != nullptr)
                    setOwner(newOwner);
            });
        }
        proceed();
    });
}

void DesktopNotifications::findOwner(std::function<void()> otherwise) {
    ask(glibBusDriverMethod("GetNameOwner", "(s)"), takeVariant(g_variant_new("(s)", serviceName)),
        [this, otherwise = std::move(otherwise)](const GLibBusReply& reply) {
            if (reply.outcome != GLibBusReply::Outcome::answered) {
                otherwise();
                return;
            }
            const char* owner = nullptr;
            g_variant_get(reply.value.get(), "(&s)", &owner);
            setOwner(owner);
        });
}

void DesktopNotifications::startService() {
    const guint32 noFlags = 0;
    ask(glibBusDriverMethod("StartServiceByName", "(u)"),
        takeVariant(g_variant_new("(su)", serviceName, noFlags)),
        [this](const GLibBusReply& reply) {
            if (reply.outcome == GLibBusReply::Outcome::answered) {
                findOwner([this] { leaveWaitingToTerminal(); });
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
    delivered_.clear();
    activationOffer_.reset();
    ownerSignals_.reset();
    if (!owner_.empty()) {
        ownerSignals_ =
            bus_->subscribe({.sender = owner_,
                             .path = servicePath,
                             .interface = serviceName,
                             .firstArgument = {},
                             .name = {}},
                            queue_, [this](const GLibBusSignal& signal) { hear(signal); });
    }
    ++question_;
    isAsking_ = false;
    proceed();
}

void DesktopNotifications::askCapabilities() {
    ask(serviceMethod("GetCapabilities", "(as)"), nullptr, [this](const GLibBusReply& reply) {
        hasToldCapabilities_ = reply.outcome == GLibBusReply::Outcome::answered;
        if (reply.outcome != GLibBusReply::Outcome::gone) {
            capabilities_ = hasToldCapabilities_ ? NotificationCapabilities::read(reply.value.get())
                                                 : NotificationCapabilities{};
            proceed();
            return;
        }
        for (auto& delivery : std::exchange(waiting_, {}))
            retry(std::move(delivery));
        setOwner({});
    });
}

void DesktopNotifications::sendWaiting() {
    for (auto next = waiting_.begin();
         next != waiting_.end() && callsInFlight_ < mostCallsInFlight;) {
        if (identifiersInFlight_.contains(next->request.identifier)) {
            ++next;
            continue;
        }
        auto delivery = std::move(*next);
        next = waiting_.erase(next);
        send(std::move(delivery));
    }
}

void DesktopNotifications::send(Delivery delivery) {
    const auto replaced = delivered_.numberShowing(delivery.request.identifier);
    const auto arguments =
        makeNotifyArguments(delivery.request, delivery.actions,
                            capabilities_.value_or(NotificationCapabilities{}), replaced);
    identifiersInFlight_.insert(delivery.request.identifier);
    call(serviceMethod("Notify", "(u)"), arguments,
         [this, owner = owner_,
          delivery = std::make_shared<Delivery>(std::move(delivery))](const GLibBusReply& reply) {
             identifiersInFlight_.erase(delivery->request.identifier);
             endDelivery(*delivery, owner, reply);
             proceed();
         });
}

void DesktopNotifications::endDelivery(Delivery& delivery, const std::string& owner,
                                       const GLibBusReply& reply) {
    const bool isOwner = owner == owner_;
    if (reply.outcome == GLibBusReply::Outcome::answered) {
        guint32 number = 0;
        g_variant_get(reply.value.get(), "(u)", &number);
        if (isOwner)
            delivered_.record(number, std::move(delivery.request));
        delivery.completion(std::nullopt);
    } else if (isOwner && reply.outcome == GLibBusReply::Outcome::refused) {
        delivery.completion(Error{reply.description});
    } else {
        retry(std::move(delivery));
        if (isOwner)
            setOwner({});
    }
}

// A service that vanished over it gets one more chance, with its successor.
void DesktopNotifications::retry(Delivery delivery) {
    const bool isReplaced = std::ranges::any_of(waiting_, [&delivery](const Delivery& later) {
        return later.request.identifier == delivery.request.identifier;
    });
    if (isReplaced || delivery.wasRetried) {
        if (!isReplaced)
            deliverToTerminal(delivery.request.content);
        delivery.completion(std::nullopt);
        return;
    }
    delivery.wasRetried = true;
    const auto later = std::ranges::find_if(
        waiting_, [&delivery](const Delivery& other) { return other.number > delivery.number; });
    waiting_.insert(later, std::move(delivery));
}

void DesktopNotifications::leaveWaitingToTerminal() {
    for (const auto& delivery : std::exchange(waiting_, {})) {
        deliverToTerminal(delivery.request.content);
        delivery.completion(std::nullopt);
    }
}

// A call whose answer decides how to go on.
void DesktopNotifications::ask(const GLibBusMethod& method, const GVariantPtr& arguments,
                               ReplyHandler handler) {
    isAsking_ = true;
    call(method, arguments,
         [this, question = ++question_, handler = std::move(handler)](const GLibBusReply& reply) {
             if (question == question_) {
                 isAsking_ = false;
                 handler(reply);
             }
             proceed();
         });
}

void DesktopNotifications::call(const GLibBusMethod& method, const GVariantPtr& arguments,
                                ReplyHandler handler) {
    ++callsInFlight_;
    bus_->call(method, arguments, queue_,
               [this, handler = std::move(handler)](const GLibBusReply& reply) {
                   --callsInFlight_;
                   handler(reply);
               });
}

// Sent to the owner itself: another one may have other abilities and other numbers.
GLibBusMethod DesktopNotifications::serviceMethod(std::string name, std::string replyType) const {
    return {.destination = owner_,
            .path = servicePath,
            .interface = serviceName,
            .name = std::move(name),
            .replyType = std::move(replyType)};
}

void DesktopNotifications::hear(const GLibBusSignal& signal) {
    if (signal.sender != owner_)
        return;
    guint32 number = 0;
    const char* text = nullptr;
    if (hasType(signal, "(us)")) {
        g_variant_get(signal.arguments.get(), "(u&s)", &number, &text);
        if (signal.name == "ActionInvoked")
            answer(number, text);
        if (signal.name == "ActivationToken")
            activationOffer_ = {.notification = number, .token = text};
    } else if (hasType(signal, "(uu)") && signal.name == "NotificationClosed") {
        g_variant_get(signal.arguments.get(), "(uu)", &number, nullptr);
        delivered_.close(number);
    }
}

void DesktopNotifications::answer(std::uint32_t number, const std::string& actionKey) {
    const auto* request = delivered_.find(number);
    if (request == nullptr)
        return;
    const auto offer = std::exchange(activationOffer_, std::nullopt);
    setActivationToken(offer && offer->notification == number ? offer->token : std::string());
    const bool isDefault = actionKey == defaultActionKey;
    answerHandler_(
        {.actionIdentifier =
             isDefault ? std::string(NotificationResponse::defaultActionIdentifier) : actionKey,
         .request = *request});
}

} // namespace Platform
