#pragma once

#include "Platform/Native/NativeConnection.h"
#include "Platform/Native/SuspendableQueue.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <variant>
#include <vector>

namespace Platform {

/// The account of one connection. It outlives the connection for as long as there is something
/// left to tell. What a user gave it is neither called nor destroyed with the mutex held: both may
/// come back to the connection.
class Connection::State : public std::enable_shared_from_this<State> {
public:
    explicit State(ConnectionAddress address);

    void resume();
    void suspend();
    void invalidate();
    void setInterruptionHandler(Handler handler);
    void setInvalidationHandler(Handler handler);
    void call(std::string method, PropertyList::Array arguments, Completion completion);

private:
    enum class Standing : std::uint8_t { made, started, invalid };

    struct Unsent {
        std::uint64_t number;
        std::string method;
        PropertyList::Array arguments;
    };

    struct Handlers {
        Handler interruption;
        Handler invalidation;
    };

    bool isConfigured() const { return !std::holds_alternative<std::monostate>(address_); }

    NativeConnection::Events events();
    void replied(std::uint64_t number, ConnectionReply reply);
    void interrupted(const std::string& reason);
    void invalidated(std::string reason);
    void tellInterruption();
    void tellInvalidation();

    // With mutex_ held:
    bool leadsNowhere() const { return standing_ == Standing::invalid || !isConfigured(); }

    void start();
    std::unique_ptr<NativeConnection> end(std::string reason);
    void failPending(ConnectionError::Kind kind, const std::string& reason);
    void complete(Completion completion, ConnectionReply reply);

    const ConnectionAddress address_;
    const std::shared_ptr<SuspendableQueue> deliveries_;
    std::mutex mutex_;                            // guards all that follows
    Standing standing_ = Standing::made;          // mutex_
    std::string reason_;                          // mutex_; why it is invalid
    std::unique_ptr<NativeConnection> native_;    // mutex_; while started
    std::uint64_t lastNumber_ = 0;                // mutex_
    std::map<std::uint64_t, Completion> pending_; // mutex_; by number, so in the order of the calls
    std::vector<Unsent> unsent_;                  // mutex_; before the start
    Handlers handlers_;                           // mutex_
    bool hasToldInvalidation_ = false;            // mutex_; from then on handlers are not kept
};

} // namespace Platform
