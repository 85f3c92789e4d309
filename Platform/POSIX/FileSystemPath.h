#pragma once

#include "Platform/URL.h"

#include <optional>
#include <string>

namespace Platform {

/// The path to hand to the system. Absent for a URL that is no file's, and for a path that the
/// system would take for a different one.
std::optional<std::string> fileSystemPath(const URL& url);

} // namespace Platform
