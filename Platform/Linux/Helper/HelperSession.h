#pragma once

#include "Platform/Linux/Helper/HelperRoute.h"
#include "Platform/Linux/Helper/NameWatch.h"
#include "Platform/Linux/Loops/GObjectPtr.h"
#include "Platform/Native/NativeConnection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Platform {

/// One connection to a helper over D-Bus, on a socket of its own. Everything about it happens on
/// the helper loop.
class HelperSession : public std::enable_shared_from_this<HelperSession> {
public:
    struct Call {
        std::uint64_t number = 0;
        std::string method;
        PropertyList::Array arguments;
    };

    explicit HelperSession(NativeConnection::Events events);

    void start(const ConnectionAddress& address);
    void call(Call call);

    /// No event comes any more.
    void end();

private:
    using Weak = std::weak_ptr<HelperSession>;

    void connect();
    void connected(GObjectPtr<GDBusConnection> connection, const GError* error);
    void closed();
    void disconnect();
    void hearOwner(const std::string& owner);
    void setPeer(const std::string& peer);
    void lose(std::string reason);
    void send(const Call& call);

    bool isOverBus() const { return !route_.destination.empty(); }

    const NativeConnection::Events events_;
    bool isEnded_ = false; // and nothing is told any more
    HelperRoute route_;
    bool isConnecting_ = false;
    GObjectPtr<GCancellable> cancellable_; // of all that is under way on the connection
    GObjectPtr<GDBusConnection> connection_;
    gulong closedHandler_ = 0;
    std::vector<Call> waiting_;            // for the connection
    std::unique_ptr<NameWatch> nameWatch_; // of the helper's name: who serves it
    std::unique_ptr<NameWatch> peerWatch_; // of who serves it: whether it lives
    std::string peer_;                     // unique name; empty: none known
};

} // namespace Platform
