#pragma once

#include "Platform/URL.h"

#include <string_view>

namespace CorbelKit {

/// The page on the topic in the application's online help, at the maker's site. Callable on any
/// thread.
Platform::URL helpPage(std::string_view topic);

} // namespace CorbelKit
