#pragma once

#include "Platform/Linux/Bus/BusConnection.h"

#include <functional>
#include <memory>
#include <string>

/// The names on a message bus, as the bus itself (org.freedesktop.DBus) gives them.
namespace Platform {

/// A method of the bus itself. It knows its own methods whether anybody else is there or not.
BusMethod busDriverMethod(std::string name, std::string replyType);

/// Has the name as long as the connection lives, or stands in line for it where another process has
/// it. For use on the serial queue that the news comes on; dropping it ends the news, and leaves
/// the name as it is.
class BusNameClaim {
public:
    enum class State : std::uint8_t { owned, inLine };
    using Handler = std::function<void(State state)>;

    /// Says what came of it, and later when the name has become this process's own; a thing may be
    /// said twice. A bus that does not answer counts as one where nobody else has the name.
    BusNameClaim(BusConnection& connection, const std::string& name, const DispatchQueue& queue,
                 Handler handler);

private:
    const std::shared_ptr<const Handler> handler_;
    const std::unique_ptr<BusSubscription> acquisition_;
};

/// Observes who has a name. For use on the serial queue that the news comes on; dropping it, which
/// the news itself may do, ends it.
class BusNameWatch {
public:
    /// The owner's unique name; empty: nobody has the name.
    using Handler = std::function<void(const std::string& owner)>;

    /// Says who has the name now, and from then on who comes to have it. Nothing is missed in
    /// between; a thing may be said twice.
    BusNameWatch(BusConnection& connection, const std::string& name, const DispatchQueue& queue,
                 Handler handler);

private:
    const std::shared_ptr<const Handler> handler_;
    const std::unique_ptr<BusSubscription> changes_;
};

} // namespace Platform
