#pragma once

#include <cstdint>
#include <string_view>

namespace CorbelKit {

/// What is coded either way in the same containers. JSON has no data and no dates: data becomes its
/// Base64, and a date its seconds since the start of the year 2001, UTC.
enum class CodingFormat : std::uint8_t { propertyList, json };

/// How a property list, which has no null, holds one, as Foundation's coders do.
inline constexpr std::string_view nullInPropertyLists = "$null";

} // namespace CorbelKit
