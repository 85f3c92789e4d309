#pragma once

#include "Platform/Linux/Bus/SessionBus.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace Platform {

/// The user's settings as the desktop's portal tells them (org.freedesktop.portal.Settings).
/// Callable on any thread, one at a time.
class DesktopSettings {
public:
    using Observer = std::function<void(const GVariantPtr& value)>;

    /// Connects. That, and all that is read, take as long as the patience together at most.
    explicit DesktopSettings(std::chrono::milliseconds patience);

    /// Null when the desktop does not tell: for want of a bus, a portal, the setting, or time.
    GVariantPtr read(const std::string& group, const std::string& key);

    /// Has the observer called on the main thread with every value that the setting gets from now
    /// on, while its loop runs. Null without a bus.
    std::unique_ptr<GLibBusSubscription> observe(const std::string& group, std::string key,
                                                 Observer observer);

private:
    const std::chrono::steady_clock::time_point end_;
    std::unique_ptr<SessionBus> bus_; // null without one
};

} // namespace Platform
