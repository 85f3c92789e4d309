#pragma once

#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <optional>

namespace CorbelKit {

/// Gives a file that could not be read another name in its folder, with the time in it, and reports
/// that. Does nothing where there is no file any more. Callable on any thread.
std::optional<Platform::Error> setAside(const Platform::URL& file);

} // namespace CorbelKit
