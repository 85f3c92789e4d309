#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Linux/Bus/BusNames.h"
#include "Platform/Linux/Helper/HelperRoute.h"
#include "Platform/Native/NativeConnection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Platform {

/// One connection to a helper over D-Bus, on a socket of its own. Everything about it happens on
/// the serial queue that it is given.
class HelperSession : public std::enable_shared_from_this<HelperSession> {
public:
    struct Call {
        std::uint64_t number = 0;
        std::string method;
        PropertyList::Array arguments;
        BusDeadline deadline = BusDeadline::max();
    };

    HelperSession(DispatchQueue queue, NativeConnection::Events events);

    void start(const ConnectionAddress& address);
    void call(Call call);

    /// No event comes any more.
    void end();

private:
    void connect();
    void connected(Expected<std::shared_ptr<BusConnection>> connection);
    void closed();
    void ownerChanged(const std::string& owner);
    void setPeer(const std::string& peer);
    void peerChanged(const std::string& owner);
    void lose(std::string reason);
    void send(Call call);
    void replied(std::uint64_t number, BusReply reply);

    bool isOverBus() const { return !route_.destination.empty(); }

    /// Has the member called with what comes on the queue, as long as there is somebody to call.
    template <class... Values>
    auto handler(void (HelperSession::*member)(Values...)) {
        return [weak = weak_from_this(), member](auto&&... values) {
            if (const auto self = weak.lock(); self && !self->isEnded_)
                (self.get()->*member)(std::forward<decltype(values)>(values)...);
        };
    }

    const DispatchQueue queue_;
    const NativeConnection::Events events_;
    bool isEnded_ = false; // and no event is sent any more
    HelperRoute route_;
    bool isConnecting_ = false;
    std::shared_ptr<BusConnection> connection_;
    std::vector<Call> waiting_;               // for the connection
    std::unique_ptr<BusNameWatch> nameWatch_; // of the helper's name: who serves it
    std::unique_ptr<BusNameWatch> peerWatch_; // of who serves it: whether it lives
    std::string peer_;                        // unique name; empty: none known
};

} // namespace Platform
