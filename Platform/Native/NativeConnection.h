#pragma once

#include "Platform/Connection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>

namespace Platform {

/// Whom a connection leads to; the first: nobody.
using ConnectionAddress =
    std::variant<std::monostate, ServiceName, MachServiceName, ListenerEndpoint>;

/// What the system itself has for a `Connection` from its start on. It keeps no account: what is
/// pending, suspended or over, and that nothing is delivered twice, is the caller's business, to
/// whom it may report the same thing more than once, or too late. Callable on any thread.
class NativeConnection {
public:
    /// What the system reports, on any thread, and never within a call of this class.
    /// The object may be destroyed meanwhile.
    struct Events {
        /// The outcome of the call that has the number.
        std::function<void(std::uint64_t number, ConnectionReply reply)> replied;
        /// A helper was lost, and with it all calls under way.
        std::function<void(std::string reason)> interrupted;
        /// Nothing more will come, and nothing can be sent.
        std::function<void(std::string reason)> invalidated;
    };

    /// Begins to connect. Calls may follow at once.
    NativeConnection(const ConnectionAddress& address, Events events);

    /// Disconnects; an event may still come.
    ~NativeConnection();
    NativeConnection(const NativeConnection&) = delete;
    NativeConnection& operator=(const NativeConnection&) = delete;
    NativeConnection(NativeConnection&&) = delete;
    NativeConnection& operator=(NativeConnection&&) = delete;

    /// Sends in the order of the calls. When the limit is over nobody waits for the answer any
    /// more, and the system may forget the call; nothing need be reported then.
    void call(std::uint64_t number, std::string method, PropertyList::Array arguments,
              CallLimit limit);

private:
    class Impl;

    const std::unique_ptr<Impl> impl_;
};

} // namespace Platform
