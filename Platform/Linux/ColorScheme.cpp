#include "Platform/Application.h"
#include "Platform/Linux/DesktopSettings.h"
#include "Platform/NeverDestroyed.h"

#include <atomic>
#include <memory>

namespace Platform {
namespace {

using Name = Appearance::Name;

constexpr auto group = "org.freedesktop.appearance";
constexpr auto key = "color-scheme";

Name appearanceOf(const GVariantPtr& value) {
    constexpr guint32 prefersDark = 1; // 2 stands for light, 0 for no preference
    const bool isDark = g_variant_is_of_type(value.get(), G_VARIANT_TYPE_UINT32) != FALSE &&
                        g_variant_get_uint32(value.get()) == prefersDark;
    return isDark ? Name::darkAqua : Name::aqua;
}

/// The desktop's colour scheme, as its portal tells it.
class ColorScheme {
public:
    static ColorScheme& shared() {
        static const NeverDestroyed<ColorScheme> scheme;
        return scheme.get();
    }

    // It listens before it asks: nobody tells again of a change that came in between.
    ColorScheme()
        : settings_(std::chrono::milliseconds(250))
        , changes_(settings_.observe(
              group, key, [this](const GVariantPtr& value) { become(appearanceOf(value)); })) {
        if (const auto value = settings_.read(group, key))
            become(appearanceOf(value));
    }

    /// Callable on any thread.
    Name appearance() const { return appearance_; }

private:
    // All that is learnt of the scheme comes through here, whoever is to be told of a change.
    void become(Name appearance) { appearance_ = appearance; }

    std::atomic<Name> appearance_ = Name::aqua;
    DesktopSettings settings_;
    const std::unique_ptr<BusSubscription> changes_;
};

} // namespace

Appearance Application::effectiveAppearance() {
    return Appearance(ColorScheme::shared().appearance());
}

} // namespace Platform
