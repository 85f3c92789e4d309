#include "Platform/Linux/Helper/HelperRoute.h"

#include "Platform/Linux/Bus/BusAddress.h"
#include "Platform/Linux/Helper/ListenerEndpointImpl.h"

#include <algorithm>
#include <cstdint>

namespace Platform {
namespace {

enum class Bus : std::uint8_t { session, system };

Expected<HelperRoute> routeOverBus(Bus bus, const std::string& name) {
    if (!isServiceName(name))
        return Error{"no service can have such a name"};
    auto address = bus == Bus::session ? sessionBusAddress() : systemBusAddress();
    if (address.empty())
        return Error{"there is no message bus"};
    auto interface = name;
    std::ranges::replace(interface, '-', '_'); // all that a name may hold beyond the others
    auto path = "/" + interface;
    std::ranges::replace(path, '.', '/');
    return HelperRoute{.address = std::move(address),
                       .destination = name,
                       .path = std::move(path),
                       .interface = std::move(interface),
                       .mayAskUser = bus == Bus::system};
}

Expected<HelperRoute> route(std::monostate /*nobody*/) {
    return Error{"the connection is not configured"};
}

Expected<HelperRoute> route(const ServiceName& service) {
    return routeOverBus(Bus::session, service.name);
}

Expected<HelperRoute> route(const MachServiceName& service) {
    const auto options = static_cast<std::uint64_t>(service.options);
    const auto privileged = static_cast<std::uint64_t>(MachServiceName::Options::privileged);
    return routeOverBus((options & privileged) != 0 ? Bus::system : Bus::session, service.name);
}

Expected<HelperRoute> route(const ListenerEndpoint& endpoint) {
    const auto& address = endpoint.impl().address();
    if (busPlaces(address).empty())
        return Error{"not the address of a listener"};
    return HelperRoute{.address = address,
                       .destination = {},
                       .path = "/com/tarnwell/Helper",
                       .interface = "com.tarnwell.Helper"};
}

} // namespace

Expected<HelperRoute> findHelperRoute(const ConnectionAddress& address) {
    return std::visit([](const auto& kind) { return route(kind); }, address);
}

} // namespace Platform
