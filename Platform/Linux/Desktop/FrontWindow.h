#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace Platform {

/// What the desktop says of the window in front.
struct FrontWindow {
    std::string instanceName; ///< first string of WM_CLASS; empty where not known
    std::string className;    ///< second string of WM_CLASS, or the application's name
    pid_t process = 0;        ///< 0 where not known
};

/// Asks the desktop: its X server, or the accessibility bus where it has none or none of its
/// windows is in front. Absent also when no answer came within a tenth of a second. Main thread.
std::optional<FrontWindow> findFrontWindow();

} // namespace Platform
