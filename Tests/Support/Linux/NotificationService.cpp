#include "Tests/Support/Linux/NotificationService.h"

#include "Tests/Support/Linux/BusService.h"

#include <string_view>
#include <utility>

namespace TestSupport {
namespace {

constexpr auto description = R"(<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg direction="out" type="as"/></method>
  <method name="Notify">
    <arg direction="in" type="s"/><arg direction="in" type="u"/><arg direction="in" type="s"/>
    <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="in" type="as"/>
    <arg direction="in" type="a{sv}"/><arg direction="in" type="i"/>
    <arg direction="out" type="u"/>
  </method>
</interface></node>)";

std::vector<std::string> textsOf(GVariantIter* texts) {
    std::vector<std::string> list;
    for (const char* text = nullptr; g_variant_iter_next(texts, "&s", &text) != FALSE;)
        list.emplace_back(text);
    g_variant_iter_free(texts);
    return list;
}

std::map<std::string, std::string> hintsOf(GVariantIter* entries) {
    std::map<std::string, std::string> hints;
    const char* key = nullptr;
    GVariant* value = nullptr;
    while (g_variant_iter_next(entries, "{&sv}", &key, &value) != FALSE) {
        const BusReference<GVariant> owned(value);
        char* const text = g_variant_print(value, FALSE);
        hints[key] = text;
        g_free(text);
    }
    g_variant_iter_free(entries);
    return hints;
}

NotifyCall callOf(GVariant* arguments) {
    NotifyCall call;
    const char *application = nullptr, *icon = nullptr, *summary = nullptr, *body = nullptr;
    GVariantIter *actions = nullptr, *hints = nullptr;
    g_variant_get(arguments, "(&su&s&s&sasa{sv}i)", &application, &call.replaces, &icon, &summary,
                  &body, &actions, &hints, &call.lifetime);
    call.applicationName = application;
    call.icon = icon;
    call.summary = summary;
    call.body = body;
    call.actions = textsOf(actions);
    call.hints = hintsOf(hints);
    return call;
}

} // namespace

NotificationService::NotificationService(std::string busAddress,
                                         const std::vector<std::string>& capabilities,
                                         std::string name)
    : busAddress_(std::move(busAddress))
    , name_(std::move(name)) {
    comeBack(capabilities);
}

NotificationService::~NotificationService() {
    vanish();
}

void NotificationService::emitActionInvoked(std::uint32_t number, const std::string& actionKey) {
    presence_->emit("ActionInvoked", g_variant_new("(us)", number, actionKey.c_str()));
}

void NotificationService::emitActivationToken(std::uint32_t number, const std::string& token) {
    presence_->emit("ActivationToken", g_variant_new("(us)", number, token.c_str()));
}

void NotificationService::emitNotificationClosed(std::uint32_t number, std::uint32_t reason) {
    presence_->emit("NotificationClosed", g_variant_new("(uu)", number, reason));
}

void NotificationService::vanish() {
    presence_.reset();
    lastNumber_ = 0;
    held_.clear();
}

void NotificationService::comeBack(const std::vector<std::string>& capabilities) {
    const auto notify = [this](GDBusMethodInvocation* invocation) {
        const std::shared_ptr<GDBusMethodInvocation> shared(invocation, g_object_unref);
        const auto answer = [this, shared](NotifyCall& call) {
            call.number = call.replaces != 0 ? call.replaces : ++lastNumber_;
            g_dbus_method_invocation_return_value(
                G_DBUS_METHOD_INVOCATION(g_object_ref(shared.get())),
                g_variant_new("(u)", call.number));
        };
        receive(callOf(g_dbus_method_invocation_get_parameters(invocation)), answer, [invocation] {
            g_dbus_method_invocation_return_dbus_error(
                G_DBUS_METHOD_INVOCATION(g_object_ref(invocation)),
                "org.freedesktop.Notifications.Error.Refused", "no more today");
        });
    };
    presence_ = std::make_unique<BusService>(
        busAddress_, name_,
        BusService::Object{.path = "/org/freedesktop/Notifications",
                           .interface = standardName,
                           .description = description},
        [notify, capabilities](GDBusMethodInvocation* call) {
            if (std::string_view(g_dbus_method_invocation_get_method_name(call)) == "Notify")
                return notify(call);
            GVariantBuilder list;
            g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
            for (const auto& capability : capabilities)
                g_variant_builder_add(&list, "s", capability.c_str());
            g_dbus_method_invocation_return_value(call, g_variant_new("(as)", &list));
        });
}

} // namespace TestSupport
