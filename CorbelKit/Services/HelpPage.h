#pragma once

#include "Platform/URL.h"

#include <optional>
#include <string_view>

namespace CorbelKit {

/// The page on the topic in the application's online help, at the maker's site; absent where that
/// is no URL. Callable on any thread.
std::optional<Platform::URL> helpPage(std::string_view topic);

} // namespace CorbelKit
