#include "Platform/Linux/Helper/NameWatch.h"

#include <utility>

namespace Platform {
namespace {

constexpr auto driver = "org.freedesktop.DBus";
constexpr auto driverPath = "/org/freedesktop/DBus";
constexpr auto ownerChanged = "NameOwnerChanged";

std::string ruleFor(const std::string& name) {
    return std::string("type='signal',sender='") + driver + "',interface='" + driver +
           "',member='" + ownerChanged + "',path='" + driverPath + "',arg0='" + name + "'";
}

void callDriver(GDBusConnection* connection, const char* method, const std::string& argument,
                GAsyncReadyCallback completion = nullptr, gpointer data = nullptr) {
    g_dbus_connection_call(connection, driver, driverPath, driver, method,
                           g_variant_new("(s)", argument.c_str()), nullptr, G_DBUS_CALL_FLAGS_NONE,
                           G_MAXINT, nullptr, completion, data);
}

void tell(const std::weak_ptr<std::function<void(const std::string&)>>& weak, const char* owner) {
    if (const auto listener = weak.lock()) // which may drop the watch
        (*listener)(owner);
}

} // namespace

// GLib adds the rule by itself too, but takes a bus that has gone meanwhile for a fault of its
// user.
NameWatch::NameWatch(GDBusConnection* connection, const std::string& name, Owner owner)
    : connection_(static_cast<GDBusConnection*>(g_object_ref(connection)))
    , rule_(ruleFor(name))
    , listener_(std::make_shared<Owner>(std::move(owner)))
    , subscription_(g_dbus_connection_signal_subscribe(
          connection, driver, driver, ownerChanged, driverPath, name.c_str(),
          G_DBUS_SIGNAL_FLAGS_NO_MATCH_RULE, hearSignal,
          std::make_unique<WeakListener>(listener_).release(), [](gpointer listener) {
              std::unique_ptr<WeakListener>(static_cast<WeakListener*>(listener)).reset();
          })) {
    callDriver(connection, "AddMatch", rule_);
    // Asked after the bus was told to report, so that no change falls between the two.
    callDriver(connection, "GetNameOwner", name, hearAnswer,
               std::make_unique<WeakListener>(listener_).release());
}

NameWatch::~NameWatch() {
    g_dbus_connection_signal_unsubscribe(connection_.get(), subscription_);
    callDriver(connection_.get(), "RemoveMatch", rule_);
}

// GLib is C: no exception may leave these.

void NameWatch::hearSignal(GDBusConnection* /*connection*/, const char* /*sender*/,
                           const char* /*path*/, const char* /*interface*/, const char* /*signal*/,
                           GVariant* arguments, gpointer listener) noexcept {
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sss)")) == FALSE)
        return;
    const char* owner = nullptr;
    g_variant_get(arguments, "(&s&s&s)", nullptr, nullptr, &owner);
    tell(*static_cast<const WeakListener*>(listener), owner);
}

void NameWatch::hearAnswer(GObject* connection, GAsyncResult* result, gpointer listener) noexcept {
    const std::unique_ptr<WeakListener> weak(static_cast<WeakListener*>(listener));
    GError* failed = nullptr;
    const GVariantPtr answer(
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &failed));
    const GErrorPtr error(failed);
    const char* owner = "";
    if (!answer && !g_error_matches(failed, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER))
        return; // the bus has gone, which is told otherwise
    if (answer && g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(s)")) != FALSE)
        g_variant_get(answer.get(), "(&s)", &owner);
    tell(*weak, owner);
}

} // namespace Platform
