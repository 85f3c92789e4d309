#include "Platform/Linux/Desktop/DesktopSettings.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

constexpr auto portal = "org.freedesktop.portal.Desktop";
constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto settings = "org.freedesktop.portal.Settings";

// The portal's answer holds the value in a variant more than its signal does.
GVariantPtr innermost(GVariantPtr value) {
    while (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_VARIANT) != FALSE)
        value.reset(g_variant_get_variant(value.get()));
    return value;
}

} // namespace

DesktopSettings::DesktopSettings(std::chrono::milliseconds patience)
    : end_(std::chrono::steady_clock::now() + patience)
    , bus_(SessionBus::connect(patience)) {}

GVariantPtr DesktopSettings::read(const std::string& group, const std::string& key) {
    if (!bus_)
        return nullptr;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
    const auto reply =
        bus_->callAndWait({.destination = portal,
                           .path = portalPath,
                           .interface = settings,
                           .name = "Read", // every version has it; "ReadOne" is new
                           .replyType = "(v)"},
                          takeVariant(g_variant_new("(ss)", group.c_str(), key.c_str())),
                          std::max(left, std::chrono::milliseconds(1)));
    if (!reply)
        return nullptr;
    return innermost(GVariantPtr(g_variant_get_child_value(reply.get(), 0)));
}

std::unique_ptr<GLibBusSubscription> DesktopSettings::observe(const std::string& group,
                                                              std::string key, Observer observer) {
    if (!bus_)
        return nullptr;
    return bus_->subscribe(
        {.sender = portal,
         .path = portalPath,
         .interface = settings,
         .firstArgument = group,
         .name = "SettingChanged"},
        DispatchQueue::main(),
        [key = std::move(key), observer = std::move(observer)](const GLibBusSignal& signal) {
            if (g_variant_is_of_type(signal.arguments.get(), G_VARIANT_TYPE("(ssv)")) == FALSE)
                return;
            const char* changed = nullptr;
            GVariant* value = nullptr;
            g_variant_get(signal.arguments.get(), "(&s&sv)", nullptr, &changed, &value);
            GVariantPtr owned(value);
            if (std::string_view(changed) == key)
                observer(innermost(std::move(owned)));
        });
}

} // namespace Platform
