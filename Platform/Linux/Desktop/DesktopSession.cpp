#include "Platform/Linux/Desktop/DesktopSession.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace Platform {

bool isDesktopSession() {
    return std::ranges::any_of(
        std::array{"XDG_CURRENT_DESKTOP", "WAYLAND_DISPLAY", "DISPLAY"}, [](const char* name) {
            const char* const value = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
            return value != nullptr && *value != '\0';
        });
}

} // namespace Platform
