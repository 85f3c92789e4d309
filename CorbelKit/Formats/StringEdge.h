#pragma once

#include <cstdint>

namespace CorbelKit {

/// The side of a text that an operation works on.
enum class StringEdge : std::uint8_t { start, end, both };

} // namespace CorbelKit
