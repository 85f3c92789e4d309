#include "Platform/Linux/Helper/HelperRoute.h"

#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Helper/ListenerEndpointImpl.h"
#include "Platform/Linux/Loops/GObjectPtr.h"

#include <algorithm>

namespace Platform {
namespace {

std::string busAddress(GBusType bus) {
    if (bus == G_BUS_TYPE_SESSION && !sessionHasBus())
        return {};
    const GStringPtr address(g_dbus_address_get_for_bus_sync(bus, nullptr, nullptr));
    return address ? address.get() : "";
}

bool isServiceName(const std::string& name) {
    return name.find('\0') == std::string::npos && g_dbus_is_name(name.c_str()) != FALSE &&
           g_dbus_is_unique_name(name.c_str()) == FALSE;
}

Expected<HelperRoute> routeOverBus(GBusType bus, const std::string& name) {
    if (!isServiceName(name))
        return Error{"no service can have such a name"};
    auto address = busAddress(bus);
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
                       .mayAskUser = bus == G_BUS_TYPE_SYSTEM};
}

Expected<HelperRoute> route(std::monostate /*nobody*/) {
    return Error{"the connection is not configured"};
}

Expected<HelperRoute> route(const ServiceName& service) {
    return routeOverBus(G_BUS_TYPE_SESSION, service.name);
}

Expected<HelperRoute> route(const MachServiceName& service) {
    const auto options = static_cast<std::uint64_t>(service.options);
    const auto privileged = static_cast<std::uint64_t>(MachServiceName::Options::privileged);
    return routeOverBus((options & privileged) != 0 ? G_BUS_TYPE_SYSTEM : G_BUS_TYPE_SESSION,
                        service.name);
}

Expected<HelperRoute> route(const ListenerEndpoint& endpoint) {
    const auto& address = endpoint.impl().address();
    if (address.find('\0') != std::string::npos ||
        g_dbus_is_supported_address(address.c_str(), nullptr) == FALSE) {
        return Error{"not the address of a listener"};
    }
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
