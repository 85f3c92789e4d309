#pragma once

#include "Platform/Mutex.h"
#include "Platform/Native/NativeConnection.h"
#include "Platform/Native/SuspendableQueue.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <variant>

namespace Platform {

/// The account of one connection. It outlives the connection for as long as there is something
/// left to deliver. What a user gave it is neither called nor destroyed with the mutex held: both
/// may come back to the connection.
class Connection::State : public std::enable_shared_from_this<State> {
public:
    explicit State(ConnectionAddress address);

    void resume();
    void suspend();
    void invalidate();
    void setInterruptionHandler(Handler handler);
    void setInvalidationHandler(Handler handler);
    void call(std::string method, PropertyList::Array arguments, Completion completion,
              CallLimit limit);

private:
    enum class Standing : std::uint8_t { made, started, invalid };

    struct Unsent {
        std::string method;
        PropertyList::Array arguments;
        CallLimit limit;
    };

    struct Handlers {
        Handler interruption;
        Handler invalidation;
    };

    bool isConfigured() const { return !std::holds_alternative<std::monostate>(address_); }

    NativeConnection::Events events();
    void startTimer(std::uint64_t number, CallLimit limit);
    void timedOut(std::uint64_t number);
    void replied(std::uint64_t number, ConnectionReply reply);
    void interrupted(const std::string& reason);
    void invalidated(std::string reason);
    void notifyInterruption();
    void notifyInvalidation();

    bool leadsNowhere() const CORBEL_REQUIRES(mutex_) {
        return standing_ == Standing::invalid || !isConfigured();
    }

    void start() CORBEL_REQUIRES(mutex_);
    std::unique_ptr<NativeConnection> end(std::string reason) CORBEL_REQUIRES(mutex_);
    void failPending(ConnectionError::Kind kind, const std::string& reason) CORBEL_REQUIRES(mutex_);
    void complete(Completion completion, ConnectionReply reply);

    const ConnectionAddress address_;
    const std::shared_ptr<SuspendableQueue> deliveries_;
    const DispatchQueue timers_ = DispatchQueue::concurrent("com.tarnwell.ConnectionTimers");
    Mutex mutex_;
    Standing standing_ CORBEL_GUARDED_BY(mutex_) = Standing::made;
    std::string reason_ CORBEL_GUARDED_BY(mutex_);                       // why it is invalid
    std::unique_ptr<NativeConnection> native_ CORBEL_GUARDED_BY(mutex_); // while started
    std::uint64_t lastNumber_ CORBEL_GUARDED_BY(mutex_) = 0;
    // By number, so in the order of the calls.
    std::map<std::uint64_t, Completion> pending_ CORBEL_GUARDED_BY(mutex_);
    std::map<std::uint64_t, Unsent> unsent_ CORBEL_GUARDED_BY(mutex_); // before the start
    Handlers handlers_ CORBEL_GUARDED_BY(mutex_);
    // From then on handlers are not kept.
    bool hasNotifiedInvalidation_ CORBEL_GUARDED_BY(mutex_) = false;
};

} // namespace Platform
