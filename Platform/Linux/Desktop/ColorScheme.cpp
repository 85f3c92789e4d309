#include "Platform/Application.h"
#include "Platform/Linux/Desktop/DesktopSettings.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/ObserverList.h"

#include <atomic>
#include <memory>
#include <utility>

namespace Platform {
namespace {

using Name = Appearance::Name;

constexpr auto group = "org.freedesktop.appearance";
constexpr auto key = "color-scheme";

Name appearanceOf(const PropertyList& value) {
    constexpr std::int64_t prefersDark = 1; // 2 stands for light, 0 for no preference
    return value == PropertyList(prefersDark) ? Name::darkAqua : Name::aqua;
}

/// The desktop's colour scheme, as its portal has it.
class ColorScheme {
public:
    static ColorScheme& shared() {
        static const NeverDestroyed<ColorScheme> scheme;
        return scheme.get();
    }

    // It listens before it asks: nobody reports again a change that came in between.
    ColorScheme()
        : settings_(std::chrono::milliseconds(250))
        , changes_(settings_.observe(
              group, key, [this](const PropertyList& value) { become(appearanceOf(value)); })) {
        if (const auto value = settings_.read(group, key))
            appearance_ = appearanceOf(*value);
    }

    /// Callable on any thread.
    Name appearance() const { return appearance_; }

    ObserverList& observers() { return observers_; }

private:
    // On the main thread.
    void become(Name appearance) {
        if (appearance_.exchange(appearance) != appearance)
            observers_.notify();
    }

    std::atomic<Name> appearance_ = Name::aqua;
    ObserverList observers_; // main thread
    DesktopSettings settings_;
    const std::unique_ptr<BusSubscription> changes_;
};

} // namespace

Appearance Application::effectiveAppearance() {
    return Appearance(ColorScheme::shared().appearance());
}

Observation Application::observeEffectiveAppearance(std::function<void()> handler) {
    MainThread::check();
    return ColorScheme::shared().observers().add(std::move(handler));
}

} // namespace Platform
