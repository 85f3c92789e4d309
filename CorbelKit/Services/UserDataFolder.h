#pragma once

#include "Platform/URL.h"

#include <optional>

namespace CorbelKit {

/// The folder of the application's user data, named after the identifier of its main bundle and
/// made where it is missing. Absent where the bundle has no identifier, or the folder cannot be
/// made. Callable on any thread.
std::optional<Platform::URL> userDataFolder();

} // namespace CorbelKit
