#pragma once

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

namespace CorbelKit::Const {

/// Keys of what a document restores of its state.
namespace Restore {
inline constexpr std::string_view compareA = "compareA";
inline constexpr std::string_view compareB = "compareB";
inline constexpr std::string_view data = "data";
inline constexpr std::string_view find = "find";
inline constexpr std::string_view hasManuallyChangedSyntax = "hasManuallyChangedSyntax";
inline constexpr std::string_view lineEnding = "lineEnding";
inline constexpr std::string_view replace = "replace";
inline constexpr std::string_view selectedRange = "selectedRange";
inline constexpr std::string_view selection = "selection";
inline constexpr std::string_view scrollPoint = "scrollPoint";
inline constexpr std::string_view sidebar = "sidebar";
inline constexpr std::string_view syntaxName = "syntaxName";
} // namespace Restore

namespace Size {} // keeps its place; nothing stands there so far

} // namespace CorbelKit::Const

// clang-format on
