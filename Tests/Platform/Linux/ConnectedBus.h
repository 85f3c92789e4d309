#pragma once

#include "Platform/Linux/Bus/BusConnection.h"

#include <future>

/// A connection to the address; null where none can be made.
inline std::shared_ptr<Platform::BusConnection>
connectedBus(const std::string& address,
             Platform::BusConnection::Peer peer = Platform::BusConnection::Peer::bus) {
    std::promise<std::shared_ptr<Platform::BusConnection>> made;
    Platform::BusConnection::connect(
        address, peer, Platform::busDeadlineIn(std::chrono::seconds(20)),
        [&made](auto result) { made.set_value(result ? std::move(*result) : nullptr); });
    return made.get_future().get();
}
