#pragma once

#include <chrono>
#include <string>

namespace Platform {

/// Whether this process may be the application of the identifier for this user, which it then is
/// until it ends. One that was opened through the system is the only one already; one that was
/// started by its path need not be. Waits so long for another to end. True where nothing can be
/// kept that would show the other.
bool becomesSoleInstance(const std::string& identifier, std::chrono::milliseconds patience);

} // namespace Platform
