#include "Platform/Native/ConnectionState.h"

#include "Platform/Native/ConnectionCall.h"

#include <algorithm>
#include <utility>

namespace Platform {

using Kind = ConnectionError::Kind;

namespace {

// Clocks count nanoseconds up to 292 years.
constexpr CallLimit longestTimer = std::chrono::hours(24 * 365);

ConnectionError failure(Kind kind, const std::string& description) {
    return {.kind = kind, .description = description};
}

} // namespace

Connection::State::State(ConnectionAddress address)
    : address_(std::move(address))
    , deliveries_(std::make_shared<SuspendableQueue>("com.tarnwell.Connection")) {
    if (!isConfigured()) {
        reason_ = "the connection is not configured";
        deliveries_->open(); // its calls fail at once, which is all that ever comes of it
    }
}

void Connection::State::resume() {
    const MutexLock lock(mutex_);
    if (deliveries_->resume() && standing_ == Standing::made)
        start();
}

void Connection::State::suspend() {
    deliveries_->suspend();
}

void Connection::State::invalidate() {
    std::unique_ptr<NativeConnection> native; // goes when the lock is free
    const MutexLock lock(mutex_);
    if (standing_ != Standing::invalid)
        native = end("the connection was invalidated");
    deliveries_->open(); // also what is left of a lost bus: nobody may resume it any more
}

void Connection::State::setInterruptionHandler(Handler handler) {
    const MutexLock lock(mutex_);
    if (!hasNotifiedInvalidation_)
        std::swap(handlers_.interruption, handler); // the caller destroys the earlier one
}

void Connection::State::setInvalidationHandler(Handler handler) {
    const MutexLock lock(mutex_);
    if (!hasNotifiedInvalidation_)
        std::swap(handlers_.invalidation, handler);
}

void Connection::State::call(std::string method, PropertyList::Array arguments,
                             Completion completion, CallLimit limit) {
    const auto inspected = inspectCall(method, arguments);
    const MutexLock lock(mutex_);
    if (leadsNowhere()) {
        complete(std::move(completion), failure(Kind::invalidated, reason_));
    } else if (!inspected) {
        complete(std::move(completion), failure(Kind::badCall, inspected.error().description));
    } else {
        const auto number = ++lastNumber_;
        pending_.emplace(number, std::move(completion));
        if (limit != noLimit)
            startTimer(number, limit);
        if (native_) {
            native_->call(number, std::move(method), std::move(arguments), limit);
        } else {
            unsent_.emplace(number, Unsent{.method = std::move(method),
                                           .arguments = std::move(arguments),
                                           .limit = limit});
        }
    }
}

// It keeps nothing but the number until it fires, also where the call ended long before.
void Connection::State::startTimer(std::uint64_t number, CallLimit limit) {
    timers_.asyncAfter(std::min(limit, longestTimer), [weak = weak_from_this(), number] {
        if (const auto self = weak.lock())
            self->timedOut(number);
    });
}

void Connection::State::timedOut(std::uint64_t number) {
    const MutexLock lock(mutex_);
    unsent_.erase(number);
    if (auto call = pending_.extract(number))
        complete(std::move(call.mapped()), failure(Kind::timedOut, "no answer in time"));
}

NativeConnection::Events Connection::State::events() {
    const std::weak_ptr<State> weak = weak_from_this();
    return {.replied =
                [weak](std::uint64_t number, ConnectionReply reply) {
                    if (const auto self = weak.lock())
                        self->replied(number, std::move(reply));
                },
            .interrupted =
                [weak](const std::string& reason) {
                    if (const auto self = weak.lock())
                        self->interrupted(reason);
                },
            .invalidated =
                [weak](std::string reason) {
                    if (const auto self = weak.lock())
                        self->invalidated(std::move(reason));
                }};
}

void Connection::State::replied(std::uint64_t number, ConnectionReply reply) {
    const MutexLock lock(mutex_);
    if (auto call = pending_.extract(number))
        complete(std::move(call.mapped()), std::move(reply));
}

void Connection::State::interrupted(const std::string& reason) {
    const MutexLock lock(mutex_);
    if (standing_ != Standing::started)
        return;
    failPending(Kind::interrupted, reason);
    deliveries_->async([self = shared_from_this()] { self->notifyInterruption(); });
}

void Connection::State::invalidated(std::string reason) {
    std::unique_ptr<NativeConnection> native; // goes when the lock is free
    const MutexLock lock(mutex_);
    if (standing_ == Standing::started)
        native = end(std::move(reason));
}

void Connection::State::notifyInterruption() {
    Handler handler;
    {
        const MutexLock lock(mutex_);
        handler = handlers_.interruption;
    }
    if (handler)
        handler();
}

void Connection::State::notifyInvalidation() {
    Handlers handlers;
    {
        const MutexLock lock(mutex_);
        handlers = std::exchange(handlers_, {});
        hasNotifiedInvalidation_ = true;
    }
    if (handlers.invalidation)
        handlers.invalidation();
}

void Connection::State::start() {
    if (!isConfigured()) {
        end(reason_);
        return;
    }
    standing_ = Standing::started;
    native_ = std::make_unique<NativeConnection>(address_, events());
    for (auto& [number, call] : std::exchange(unsent_, {}))
        native_->call(number, std::move(call.method), std::move(call.arguments), call.limit);
}

std::unique_ptr<NativeConnection> Connection::State::end(std::string reason) {
    standing_ = Standing::invalid;
    reason_ = std::move(reason);
    unsent_.clear();
    failPending(Kind::invalidated, reason_);
    deliveries_->async([self = shared_from_this()] { self->notifyInvalidation(); });
    return std::move(native_);
}

void Connection::State::failPending(Kind kind, const std::string& reason) {
    for (auto& [number, completion] : std::exchange(pending_, {}))
        complete(std::move(completion), failure(kind, reason));
}

void Connection::State::complete(Completion completion, ConnectionReply reply) {
    if (!completion)
        return;
    deliveries_->async([completion = std::move(completion), reply = std::move(reply)]() mutable {
        completion(std::move(reply));
    });
}

} // namespace Platform
