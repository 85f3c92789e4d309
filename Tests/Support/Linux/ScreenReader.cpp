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

std::array<int, 4> placeOf(const Bus& bus, const Object& object) {
    constexpr guint32 inWindow = 1; // ATSPI_COORD_TYPE_WINDOW
    const auto extents =
        bus.ask(object, "org.a11y.atspi.Component", "GetExtents", g_variant_new("(u)", inWindow));
    std::array<int, 4> place{};
    if (extents)
        g_variant_get(extents.get(), "(iiii)", &place[0], &place[1], &place[2], &place[3]);
    return place;
}

Element elementOf(const Bus& bus, const Object& object) {
    const auto role = bus.ask(object, accessible, "GetRoleName");
    const auto states = bus.ask(object, accessible, "GetState");
    if (!role || !states)
        return {.role = "gone"};
    guint32 first = 0;
    g_variant_get_child(states.get(), 0, "u", &first);
    const auto place = placeOf(bus, object);
    // The bits of AtspiStateType.
    return {.role = g_variant_get_string(role.get(), nullptr),
            .name = bus.property(object, "Name"),
            .description = bus.property(object, "Description"),
            .hasFocus = (first >> 12U & 1U) != 0,
            .canHaveFocus = (first >> 11U & 1U) != 0,
            .isShown = (first >> 30U & 1U) != 0 && place[2] > 0 && place[3] > 0,
            .place = place};
}

// NOLINTNEXTLINE(misc-no-recursion): a window is as deep as its layout
void addChildren(const Bus& bus, const Object& object, std::vector<Element>& found) {
    const auto children = bus.ask(object, accessible, "GetChildren");
    const gsize count = children ? g_variant_n_children(children.get()) : 0;
    for (gsize index = 0; index < count; ++index) {
        const char* busName = nullptr;
        const char* path = nullptr;
        g_variant_get_child(children.get(), index, "(&s&o)", &busName, &path);
        const Object child{.busName = busName, .path = path};
        auto element = elementOf(bus, child);
        const bool isButton = element.role == "button";
        if (element.role != "group" || !element.name.empty())
            found.push_back(std::move(element));
        if (!isButton)
            addChildren(bus, child, found);
    }
}

} // namespace

std::vector<Element> elements(const std::string& sessionBusAddress) {
    const auto address =
        Bus(sessionBusAddress.c_str()).ask({busName, "/org/a11y/bus"}, busName, "GetAddress");
    std::vector<Element> found;
    if (address) {
        addChildren(Bus(g_variant_get_string(address.get(), nullptr)),
                    {"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"}, found);
    }
    return found;
}

std::string read(const std::string& sessionBusAddress) {
    std::string lines;
    for (const auto& element : elements(sessionBusAddress)) {
        lines += element.role + " \"" + element.name + '"';
        if (!element.description.empty())
            lines += " (" + element.description + ')';
        lines += element.hasFocus ? " focused\n" : "\n";
    }
    return lines;
}

} // namespace TestSupport::ScreenReader
