#pragma once

#include <string_view>

namespace Platform {

/// Posts the name, of no object, on the system's own default notification centre, where each
/// process has one (macOS): its observers have been called when this returns. Nothing elsewhere.
/// Main thread.
void postToSystemObservers(std::string_view name);

} // namespace Platform
