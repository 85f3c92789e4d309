#include "Platform/Application.h"
#include "Platform/Linux/SessionBus.h"
#include "Platform/NeverDestroyed.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <string_view>
#include <utility>

namespace Platform {
namespace {

using Name = Appearance::Name;

constexpr auto portal = "org.freedesktop.portal.Desktop";
constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto settings = "org.freedesktop.portal.Settings";
constexpr auto settingNamespace = "org.freedesktop.appearance";
constexpr auto settingKey = "color-scheme";

// The portal's answer holds the value in a variant more than its signal does.
Name appearanceOf(GVariantPtr value) {
    constexpr guint32 prefersDark = 1; // 2 stands for light, 0 for no preference
    while (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_VARIANT) != FALSE)
        value.reset(g_variant_get_variant(value.get()));
    const bool isDark = g_variant_is_of_type(value.get(), G_VARIANT_TYPE_UINT32) != FALSE &&
                        g_variant_get_uint32(value.get()) == prefersDark;
    return isDark ? Name::darkAqua : Name::aqua;
}

/// The desktop's colour scheme, as its portal tells it (org.freedesktop.portal.Settings).
class ColorScheme {
public:
    static const ColorScheme& shared() {
        static const NeverDestroyed<ColorScheme> scheme;
        return scheme.get();
    }

    // It listens before it asks: nobody tells again of a change that came in between.
    ColorScheme() {
        constexpr auto patience = std::chrono::milliseconds(250);
        const auto end = std::chrono::steady_clock::now() + patience;
        bus_ = SessionBus::connect(patience);
        if (!bus_)
            return;
        listen();
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        ask(std::max(left, std::chrono::milliseconds(1)));
    }

    /// Callable on any thread.
    Name appearance() const { return appearance_; }

private:
    void listen() {
        changes_ = bus_->subscribe({.sender = portal,
                                    .path = portalPath,
                                    .interface = settings,
                                    .firstArgument = settingNamespace,
                                    .name = "SettingChanged"},
                                   DispatchQueue::main(),
                                   [this](const BusSignal& signal) { hear(signal); });
    }

    void ask(std::chrono::milliseconds patience) {
        const auto reply = bus_->callAndWait(
            {.destination = portal,
             .path = portalPath,
             .interface = settings,
             .name = "Read", // every version has it; "ReadOne" is new
             .replyType = "(v)"},
            takeVariant(g_variant_new("(ss)", settingNamespace, settingKey)), patience);
        if (reply)
            become(appearanceOf(GVariantPtr(g_variant_get_child_value(reply.get(), 0))));
    }

    void hear(const BusSignal& signal) {
        if (g_variant_is_of_type(signal.arguments.get(), G_VARIANT_TYPE("(ssv)")) == FALSE)
            return;
        const char* key = nullptr;
        GVariant* value = nullptr;
        g_variant_get(signal.arguments.get(), "(&s&sv)", nullptr, &key, &value);
        GVariantPtr scheme(value);
        if (std::string_view(key) == settingKey)
            become(appearanceOf(std::move(scheme)));
    }

    // All that is learnt of the scheme comes through here, whoever is to be told of a change.
    void become(Name appearance) { appearance_ = appearance; }

    std::atomic<Name> appearance_ = Name::aqua;
    std::unique_ptr<SessionBus> bus_; // null without one
    std::unique_ptr<BusSubscription> changes_;
};

} // namespace

Appearance Application::effectiveAppearance() {
    return Appearance(ColorScheme::shared().appearance());
}

} // namespace Platform
