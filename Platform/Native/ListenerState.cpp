#include "Platform/Native/ListenerState.h"

#include "Platform/Native/ConnectionCall.h"
#include "Platform/PrintableText.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace Platform {

/// Goes with the last handle of a call.
class ConnectionListener::Reply::Pending {
public:
    Pending(std::weak_ptr<State> state, std::uint64_t number)
        : state_(std::move(state))
        , number_(number) {}

    ~Pending() {
        answer(CallRefusal{.name = CallRefusal::Name::noAnswer,
                           .description = "the helper gave no answer"});
    }

    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;
    Pending(Pending&&) = delete;
    Pending& operator=(Pending&&) = delete;

    void answer(CallAnswer answer) {
        if (isAnswered_.exchange(true))
            return;
        if (const auto state = state_.lock())
            state->answer(number_, std::move(answer));
    }

    static Reply makeReply(std::weak_ptr<State> state, std::uint64_t number) {
        return Reply(std::make_shared<Pending>(std::move(state), number));
    }

private:
    const std::weak_ptr<State> state_;
    const std::uint64_t number_;
    std::atomic<bool> isAnswered_ = false;
};

namespace {

constexpr std::size_t mostCalls = 64;
constexpr std::size_t mostCallsOfOne = 16;
constexpr std::size_t mostBytes = 64U << 20U;
constexpr std::size_t longestName = 255;
constexpr std::size_t longestDescription = 4096;

bool isErrorName(std::string_view name) {
    if (name.size() > longestName || name.find('.') == std::string_view::npos)
        return false;
    while (true) {
        const auto end = std::min(name.find('.'), name.size());
        if (!isMethodName(name.substr(0, end)))
            return false;
        if (end == name.size())
            return true;
        name.remove_prefix(end + 1);
    }
}

CallAnswer proper(CallAnswer answer) {
    if (!answer) {
        auto refusal = answer.error();
        if (!isErrorName(refusal.name))
            refusal.name = CallRefusal::Name::refused;
        // It may hold what the client sent, and no message holds text that is not UTF-8.
        refusal.description = printableText(refusal.description.substr(0, longestDescription),
                                            ActingCharacters::spaced);
        return refusal;
    }
    const auto* const null = answer->get<PropertyList::Null>();
    const auto inspected =
        null != nullptr ? inspectCall("answer", {}) : inspectCall("answer", {*answer});
    if (!inspected) {
        return CallRefusal{.name = CallRefusal::Name::badAnswer,
                           .description = inspected.error().description};
    }
    return answer;
}

} // namespace

ConnectionListener::Reply::Reply(std::shared_ptr<Pending> pending)
    : pending_(std::move(pending)) {}

void ConnectionListener::Reply::operator()(CallAnswer answer) const {
    pending_->answer(std::move(answer));
}

ConnectionListener::State::State(MachServiceName service, CallHandler handler)
    : service_(std::move(service))
    , handler_(std::make_shared<const CallHandler>(std::move(handler))) {}

void ConnectionListener::State::setInvalidationHandler(InvalidationHandler handler) {
    const MutexLock lock(mutex_);
    std::swap(invalidationHandler_, handler); // the caller destroys the earlier one
}

void ConnectionListener::State::resume() {
    const MutexLock lock(mutex_);
    if (!std::exchange(isResumed_, true))
        native_ = std::make_unique<NativeListener>(service_, events());
}

void ConnectionListener::State::invalidate() {
    std::unique_ptr<NativeListener> native; // go when the lock is free
    InvalidationHandler handler;
    const MutexLock lock(mutex_);
    isResumed_ = true;
    std::swap(native, native_);
    std::swap(handler, invalidationHandler_);
}

NativeListener::Events ConnectionListener::State::events() {
    const std::weak_ptr<State> weak = weak_from_this();
    return {.called =
                [weak](std::uint64_t number, const std::string& client, Call call) {
                    if (const auto self = weak.lock())
                        self->called(number, client, std::move(call));
                },
            .invalidated =
                [weak](std::string reason) {
                    if (const auto self = weak.lock())
                        self->invalidated(std::move(reason));
                }};
}

void ConnectionListener::State::called(std::uint64_t number, const std::string& client, Call call) {
    const auto size = inspectCall(call.method, call.arguments);
    const MutexLock lock(mutex_);
    if (!native_)
        return;
    if (!size) {
        send(number, CallRefusal{.name = CallRefusal::Name::badCall,
                                 .description = size.error().description});
    } else if (!begin(number, client, *size)) {
        send(number,
             CallRefusal{.name = CallRefusal::Name::busy, .description = "too many calls at once"});
    } else {
        queue_.async([self = shared_from_this(), number, call = std::move(call)]() mutable {
            self->deliver(number, std::move(call));
        });
    }
}

bool ConnectionListener::State::begin(std::uint64_t number, const std::string& client,
                                      std::size_t size) {
    const auto found = callsOf_.find(client);
    const auto ofThis = found == callsOf_.end() ? 0 : found->second;
    if (underWay_.size() >= mostCalls || ofThis >= mostCallsOfOne || size > mostBytes - size_)
        return false;
    underWay_.emplace(number, UnderWay{.client = client, .size = size});
    callsOf_[client] = ofThis + 1;
    size_ += size;
    return true;
}

void ConnectionListener::State::deliver(std::uint64_t number, Call call) {
    {
        const MutexLock lock(mutex_);
        if (!native_) // invalidated meanwhile
            return;
    }
    // Without a handler the handle of the call goes here, which refuses it.
    const auto reply = Reply::Pending::makeReply(weak_from_this(), number);
    if (const auto& handler = *handler_)
        handler(std::move(call), reply);
}

void ConnectionListener::State::answer(std::uint64_t number, CallAnswer answer) {
    auto sendable = proper(std::move(answer));
    const MutexLock lock(mutex_);
    const auto call = underWay_.extract(number);
    if (!call)
        return;
    size_ -= call.mapped().size;
    const auto client = callsOf_.find(call.mapped().client);
    if (--client->second == 0)
        callsOf_.erase(client);
    send(number, std::move(sendable));
}

void ConnectionListener::State::send(std::uint64_t number, CallAnswer answer) {
    if (native_)
        native_->answer(number, std::move(answer));
}

void ConnectionListener::State::invalidated(std::string reason) {
    std::unique_ptr<NativeListener> native; // goes when the lock is free
    InvalidationHandler handler;
    {
        const MutexLock lock(mutex_);
        std::swap(native, native_);
        std::swap(handler, invalidationHandler_);
    }
    if (native && handler) {
        queue_.async(
            [handler = std::move(handler), reason = std::move(reason)] { handler(reason); });
    }
}

} // namespace Platform
