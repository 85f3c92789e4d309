#pragma once

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are told

namespace CorbelKit::Const {

/// Types of what is dragged and dropped.
namespace Pasteboard {
inline constexpr std::string_view string = "public.utf8-plain-text";
inline constexpr std::string_view document = "com.tarnwell.Document";
inline constexpr std::string_view folder = "com.tarnwell.Folder";
inline constexpr std::string_view item = "com.tarnwell.Item";
inline constexpr std::string_view row = "com.tarnwell.Row";
inline constexpr std::string_view tag = "com.tarnwell.Tag";
} // namespace Pasteboard

} // namespace CorbelKit::Const

// clang-format on
