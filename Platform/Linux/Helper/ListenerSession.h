#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Linux/Bus/BusConnection.h"
#include "Platform/Linux/Helper/HelperRoute.h"
#include "Platform/Native/NativeListener.h"

#include <cstdint>
#include <memory>
#include <string>

namespace Platform {

/// One listener on a message bus, on a socket of its own. Everything about it happens on the serial
/// queue that it is given; calls are reported on the buses' thread, so that whoever keeps account
/// of them can refuse them before they pile up.
class ListenerSession : public std::enable_shared_from_this<ListenerSession> {
public:
    ListenerSession(DispatchQueue queue, NativeListener::Events events);

    void start(const MachServiceName& service);
    void answer(std::uint64_t number, const CallAnswer& answer);

    /// No event comes any more, but for calls that are being reported.
    void end();

private:
    void connected(Expected<std::shared_ptr<BusConnection>> connection);
    void named(const BusReply& reply);
    void lose(const std::string& reason);

    const DispatchQueue queue_;
    const NativeListener::Events events_;
    bool isEnded_ = false;
    HelperRoute route_;
    std::shared_ptr<BusConnection> connection_;
};

} // namespace Platform
