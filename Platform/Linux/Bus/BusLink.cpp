#include "Platform/Linux/Bus/BusLink.h"

#include "Platform/Linux/Bus/BusAddress.h"
#include "Platform/Linux/Bus/BusThread.h"
#include "Platform/Linux/Bus/BusWriter.h"

#include <asio/post.hpp>

#include <algorithm>
#include <limits>
#include <system_error>
#include <utility>

namespace Platform {
namespace {

using Outcome = BusReply::Outcome;

const char* orNone(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

std::uint64_t microsecondsUntil(BusDeadline deadline) {
    if (deadline == BusDeadline::max())
        return std::numeric_limits<std::uint64_t>::max(); // libsystemd's word for no deadline
    const auto left = std::chrono::ceil<std::chrono::microseconds>(deadline - BusClock::now());
    return static_cast<std::uint64_t>(std::max<std::int64_t>(left.count(), 1));
}

std::string matchOf(const BusSignalRule& rule) {
    std::string match = "type='signal'";
    const auto add = [&match](const char* key, const std::string& value) {
        if (!value.empty())
            match += std::string(",") + key + "='" + value + "'";
    };
    add("sender", rule.sender);
    add("path", rule.path);
    add("interface", rule.interface);
    add("member", rule.name);
    add("arg0", rule.firstArgument);
    return match;
}

int write(sd_bus* bus, const BusMethod& method, const BusArguments& arguments,
          SDBus::MessagePtr& message) {
    sd_bus_message* made = nullptr;
    const int result =
        sd_bus_message_new_method_call(bus, &made, orNone(method.destination), method.path.c_str(),
                                       method.interface.c_str(), method.name.c_str());
    message.reset(made);
    if (result < 0)
        return result;
    sd_bus_message_set_auto_start(made, method.mayStart ? 1 : 0);
    sd_bus_message_set_allow_interactive_authorization(made, method.mayAskUser ? 1 : 0);
    BusWriter writer(made);
    if (arguments)
        arguments(writer);
    return writer.result();
}

BusReply closedReply() {
    return {.outcome = Outcome::closed, .description = "the connection is closed"};
}

} // namespace

void BusLink::post(std::function<void(BusLink& link)> task) {
    asio::post(busExecutor(), [self = shared_from_this(), task = std::move(task)] { task(*self); });
}

std::uint64_t BusLink::newNumber() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

void BusLink::open(const std::string& address, BusDeadline deadline, Opened handler) {
    for (auto& place : busPlaces(address))
        places_.push_back(std::move(place));
    deadline_ = deadline;
    opened_ = std::move(handler);
    openNextPlace("no address of a bus");
}

void BusLink::openNextPlace(std::string reason) {
    while (!places_.empty()) {
        const auto place = std::move(places_.front());
        places_.pop_front();
        auto socket = BusSocket::connect(place, isToBus_, deadline_, socketHandlers());
        if (socket) {
            socket_ = std::move(*socket);
            socket_->resume();
            return;
        }
        reason = socket.error().description;
    }
    isClosed_ = true;
    std::exchange(opened_, {})(Error{std::move(reason)});
}

// They keep this object as long as the socket is there, which this object drops at its end.
BusSocket::Handlers BusLink::socketHandlers() {
    const auto self = shared_from_this();
    return {.ready = [self] { std::exchange(self->opened_, {})(std::nullopt); },
            .take = [self] { return self->takeArrivals(); },
            .lost =
                [self](const std::string& reason) {
                    self->socket_.reset();
                    if (self->opened_) {
                        self->openNextPlace(reason);
                    } else {
                        self->end(reason);
                    }
                }};
}

void BusLink::call(Call call) {
    if (!socket_) {
        call.handler(closedReply());
        return;
    }
    const auto number = newNumber();
    auto target = std::make_unique<Target>(Target{.link = this, .number = number});
    const int result = send(call, *target);
    if (result < 0) {
        const bool isOpen = sd_bus_is_open(socket_->bus()) > 0;
        call.handler({.outcome = isOpen ? Outcome::unsent : Outcome::closed,
                      .description = std::generic_category().message(-result)});
        socket_->resume();
        return;
    }
    calls_.emplace(number, PendingCall{.call = std::move(call), .target = std::move(target)});
    socket_->resume();
}

int BusLink::send(const Call& call, Target& target) {
    SDBus::MessagePtr message;
    int result = write(socket_->bus(), call.method, call.arguments, message);
    sd_bus_slot* slot = nullptr;
    if (result >= 0) {
        result = sd_bus_call_async(socket_->bus(), &slot, message.get(), receive, &target,
                                   microsecondsUntil(call.deadline));
    }
    target.slot.reset(slot);
    return result;
}

void BusLink::subscribe(std::uint64_t number, const BusSignalRule& rule, SignalHandler handler) {
    if (!socket_)
        return;
    auto target = std::make_unique<Target>(Target{.link = this, .number = number});
    sd_bus_slot* slot = nullptr;
    // A bus that takes no rule sends no signals; without a handler for it, libsystemd would give
    // the connection up.
    const auto installed = [](sd_bus_message*, void*, sd_bus_error*) { return 0; };
    sd_bus_add_match_async(socket_->bus(), &slot, matchOf(rule).c_str(), receive, installed,
                           target.get());
    target->slot.reset(slot);
    subscriptions_.emplace(number, Subscription{.sender = rule.sender,
                                                .handler = std::move(handler),
                                                .target = std::move(target)});
    socket_->resume();
}

void BusLink::unsubscribe(std::uint64_t number) {
    subscriptions_.erase(number);
    if (socket_)
        socket_->resume();
}

void BusLink::serve(BusService service, CallHandler handler) {
    if (!socket_)
        return;
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object(socket_->bus(), &slot, service.path.c_str(), receiveCall, this);
    served_ = std::make_unique<Served>(Served{.service = std::move(service),
                                              .handler = std::move(handler),
                                              .slot = SDBus::SlotPtr(slot)});
}

// What the message cannot hold, or nobody waits for any more, is not sent.
void BusLink::answer(std::uint64_t number, const BusAnswer& answer) {
    const auto call = unanswered_.extract(number);
    if (!call || !socket_)
        return;
    auto* const asked = call.mapped().get();
    if (!answer.errorName.empty()) {
        sd_bus_reply_method_errorf(asked, answer.errorName.c_str(), "%s",
                                   answer.description.c_str());
    } else if (sd_bus_message_get_expect_reply(asked) > 0) {
        sd_bus_message* made = nullptr;
        sd_bus_message_new_method_return(asked, &made);
        const SDBus::MessagePtr message(made);
        BusWriter writer(made);
        if (answer.values)
            answer.values(writer);
        if (made != nullptr && writer.result() == 0)
            sd_bus_send(socket_->bus(), made, nullptr);
    }
    socket_->resume();
}

void BusLink::whenClosed(ClosedHandler handler) {
    if (socket_) {
        closedHandlers_.push_back(std::move(handler));
    } else {
        handler("closed before");
    }
}

void BusLink::close() {
    closedHandlers_.clear();
    if (socket_)
        std::exchange(socket_, nullptr)->close();
    end({});
}

// libsystemd is C: no exception may leave this.
int BusLink::receive(sd_bus_message* message, void* target, sd_bus_error* /*error*/) noexcept {
    const auto& [link, number, slot] = *static_cast<const Target*>(target);
    link->arrivals_.emplace_back(number, message);
    return 0;
}

// 0 leaves the call to libsystemd: to its own interfaces, or to a refusal.
int BusLink::receiveCall(sd_bus_message* message, void* link, sd_bus_error* /*error*/) noexcept {
    auto& self = *static_cast<BusLink*>(link);
    const char* const interface = sd_bus_message_get_interface(message);
    if (interface == nullptr || self.served_->service.interface != interface)
        return 0;
    const auto number = newNumber();
    self.unanswered_.emplace(number, sd_bus_message_ref(message));
    self.arrivals_.emplace_back(number, message);
    return 1;
}

bool BusLink::takeArrivals() {
    while (!arrivals_.empty()) {
        if (!take(arrivals_.front()))
            return false;
        arrivals_.pop_front();
    }
    return true;
}

// False when it is not read to its end yet.
bool BusLink::take(BusArrival& arrival) {
    if (const auto call = calls_.find(arrival.number()); call != calls_.end())
        return takeReply(arrival, call->second);
    if (const auto found = subscriptions_.find(arrival.number()); found != subscriptions_.end())
        return takeSignal(arrival, found->second);
    return !unanswered_.contains(arrival.number()) || takeCall(arrival);
}

bool BusLink::takeReply(BusArrival& arrival, PendingCall& pending) {
    auto reply = arrival.readReply(pending.call.method, pending.call.deadline);
    if (!reply)
        return false;
    const auto handler = std::move(pending.call.handler);
    calls_.erase(arrival.number());
    handler(std::move(*reply));
    return true;
}

bool BusLink::takeSignal(BusArrival& arrival, const Subscription& subscription) {
    if (!arrival.mayComeFrom(subscription.sender))
        return true;
    const auto state = arrival.readSignal();
    if (state == BusReader::State::underWay)
        return false;
    if (state == BusReader::State::atEnd)
        subscription.handler(arrival.takeSignal());
    return true;
}

bool BusLink::takeCall(BusArrival& arrival) {
    const auto state = arrival.readCall();
    if (state == BusReader::State::underWay)
        return false;
    if (state == BusReader::State::atEnd) {
        served_->handler(arrival.takeCall());
    } else {
        answer(arrival.number(), {.errorName = SD_BUS_ERROR_INVALID_ARGS,
                                  .description = "arguments without a meaning as values"});
    }
    return true;
}

void BusLink::end(const std::string& reason) {
    isClosed_ = true;
    arrivals_.clear();
    subscriptions_.clear();
    unanswered_.clear();
    served_.reset();
    for (auto& [number, pending] : std::exchange(calls_, {}))
        pending.call.handler(closedReply());
    for (const auto& handler : std::exchange(closedHandlers_, {}))
        handler(reason);
}

} // namespace Platform
