#include "Platform/Linux/Desktop/SettingsEntries.h"

#include "Platform/Linux/Desktop/DesktopEntries.h"

#include <array>
#include <string_view>

namespace Platform::SettingsEntries {
namespace {

// GNOME 43 to 48, Plasma 5.27 and 6, Xfce 4.18.
using Identifiers = std::array<std::string_view, 3>;
constexpr Identifiers applications{"org.gnome.Settings", "systemsettings", "xfce-settings-manager"};
constexpr Identifiers loginItemPanels{"gnome-applications-panel", "kcm_autostart",
                                      "xfce-session-settings"};

std::optional<std::string> firstInstalled(const Identifiers& identifiers) {
    for (const auto identifier : identifiers) {
        if (auto path = DesktopEntries::pathForIdentifier(identifier))
            return path;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> application() {
    return firstInstalled(applications);
}

std::optional<std::string> loginItems() {
    return firstInstalled(loginItemPanels);
}

} // namespace Platform::SettingsEntries
