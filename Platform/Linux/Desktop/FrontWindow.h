#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>

namespace Platform {

/// What the desktop says of the window in front.
struct FrontWindow {
    std::string instanceName; ///< first string of WM_CLASS; empty where not known
    std::string className;    ///< second string of WM_CLASS, or the application's name
    pid_t process = 0;        ///< 0 where not known
};

/// Asks the desktop for the localised name of the application in front: its X server, or the
/// accessibility bus where it has none or none of its windows is in front. The completion is called
/// once, on the main thread; the name is absent also when no answer came within half a second, or
/// to a question before this one. Main thread.
void findFrontApplication(std::function<void(std::optional<std::string> name)> completion);

} // namespace Platform
