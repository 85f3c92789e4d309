#pragma once

#include "Platform/Linux/Bus/SharedBus.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Platform {

/// The user's settings as the desktop's portal has them (org.freedesktop.portal.Settings).
/// Callable on any thread, one at a time.
class DesktopSettings {
public:
    using Observer = std::function<void(const PropertyList& value)>;

    /// Connects. That, and all that is read, take as long as the patience together at most.
    explicit DesktopSettings(BusClock::duration patience);

    /// Absent for want of a bus, a portal, the setting, or time.
    std::optional<PropertyList> read(const std::string& group, const std::string& key);

    /// Has the observer called on the main thread with every value that the setting gets from now
    /// on, while its loop runs. Null without a bus.
    std::unique_ptr<BusSubscription> observe(const std::string& group, std::string key,
                                             Observer observer);

private:
    const BusDeadline deadline_;
    const std::shared_ptr<BusConnection> bus_; // null without one
};

} // namespace Platform
