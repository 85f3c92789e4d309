#include "Tests/Support/Linux/ScreenReader.h"

#include "Tests/Support/Linux/BusService.h"

namespace TestSupport::ScreenReader {
namespace {

constexpr auto accessible = "org.a11y.atspi.Accessible";

struct Object {
    std::string busName;
    std::string path;
};

class Bus {
public:
    explicit Bus(const char* address)
        : connection_(g_dbus_connection_new_for_address_sync(
              address,
              // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): a set of flags
              static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
              nullptr, nullptr, nullptr)) {}

    /// The first value of the answer; null where the object is gone by now.
    BusReference<GVariant> ask(const Object& object, const char* interface, const char* method,
                               GVariant* arguments = nullptr) const {
        constexpr int patience = 5000; // milliseconds
        const BusReference<GVariant> reply(g_dbus_connection_call_sync(
            connection_.get(), object.busName.c_str(), object.path.c_str(), interface, method,
            arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, patience, nullptr, nullptr));
        return BusReference<GVariant>(reply ? g_variant_get_child_value(reply.get(), 0) : nullptr);
    }

    std::string property(const Object& object, const char* name) const {
        const auto boxed = ask(object, "org.freedesktop.DBus.Properties", "Get",
                               g_variant_new("(ss)", accessible, name));
        const BusReference<GVariant> value(boxed ? g_variant_get_variant(boxed.get()) : nullptr);
        return value ? g_variant_get_string(value.get(), nullptr) : "gone";
    }

private:
    BusReference<GDBusConnection> connection_;
};

std::string lineOf(const Bus& bus, const Object& object) {
    const auto role = bus.ask(object, accessible, "GetRoleName");
    const auto states = bus.ask(object, accessible, "GetState");
    if (!role || !states)
        return "gone\n";
    std::string line = g_variant_get_string(role.get(), nullptr);
    const auto name = bus.property(object, "Name");
    if (line == "group" && name.empty())
        return {};
    line += " \"" + name + '"';
    if (const auto description = bus.property(object, "Description"); !description.empty())
        line += " (" + description + ')';
    guint32 first = 0;
    g_variant_get_child(states.get(), 0, "u", &first);
    constexpr unsigned focused = 1U << 12U; // ATSPI_STATE_FOCUSED
    return line + ((first & focused) != 0 ? " focused\n" : "\n");
}

std::string childrenOf(const Bus& bus, const Object& object) {
    std::string lines;
    const auto children = bus.ask(object, accessible, "GetChildren");
    const gsize count = children ? g_variant_n_children(children.get()) : 0;
    for (gsize index = 0; index < count; ++index) {
        const char* busName = nullptr;
        const char* path = nullptr;
        g_variant_get_child(children.get(), index, "(&s&o)", &busName, &path);
        const Object child{.busName = busName, .path = path};
        const auto line = lineOf(bus, child);
        lines += line;
        if (!line.starts_with("button"))
            lines += childrenOf(bus, child);
    }
    return lines;
}

} // namespace

std::string read(const std::string& sessionBusAddress) {
    const auto address =
        Bus(sessionBusAddress.c_str()).ask({busName, "/org/a11y/bus"}, busName, "GetAddress");
    if (!address)
        return {};
    return childrenOf(Bus(g_variant_get_string(address.get(), nullptr)),
                      {"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"});
}

} // namespace TestSupport::ScreenReader
