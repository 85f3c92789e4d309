#pragma once

#include <string_view>

namespace Platform {

/// Writes one line to the system log under the program's name. Callable on any thread.
void log(std::string_view message);

} // namespace Platform
