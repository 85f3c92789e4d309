#pragma once

#include "Platform/URL.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace Platform {

/// All bytes of a regular file. Absent when it is none, cannot be read, or holds more than
/// `largestSize` bytes.
std::optional<std::vector<std::byte>> contentsOf(const URL& file, std::size_t largestSize);

} // namespace Platform
