#pragma once

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

/// Types of what is dragged and dropped.
namespace CorbelKit::Const::Pasteboard {
inline constexpr std::string_view string = "public.utf8-plain-text";
inline constexpr std::string_view document = "com.tarnwell.Document";
inline constexpr std::string_view folder = "com.tarnwell.Folder";
inline constexpr std::string_view item = "com.tarnwell.Item";
inline constexpr std::string_view row = "com.tarnwell.Row";
inline constexpr std::string_view tag = "com.tarnwell.Tag";
} // namespace CorbelKit::Const::Pasteboard

// clang-format on
