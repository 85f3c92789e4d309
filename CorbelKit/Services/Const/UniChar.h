#pragma once

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

namespace CorbelKit::Const {

/// UTF-16 code units.
namespace UniChar {
namespace LineEnding {
inline constexpr char16_t lineFeed = 10;
inline constexpr char16_t carriageReturn = 13;
} // namespace LineEnding

inline constexpr char16_t lineSeparator = 8232;
inline constexpr char16_t paragraphSeparator = 8233;
inline constexpr char16_t nextLine = 133;
inline constexpr char16_t ampersand = 38;
inline constexpr char16_t backslash = 92;
inline constexpr char16_t colon = 58;
inline constexpr char16_t hyphen = 45;
inline constexpr char16_t dollar = 36;
inline constexpr char16_t doubleQuote = 34;
inline constexpr char16_t equals = 61;
inline constexpr char16_t greaterThan = 62;
inline constexpr char16_t leftBrace = 123;
inline constexpr char16_t leftParenthesis = 40;
inline constexpr char16_t leftBracket = 91;
inline constexpr char16_t lessThan = 60;
inline constexpr char16_t noBreakSpace = 160;
inline constexpr char16_t percent = 37;
inline constexpr char16_t period = 46;
inline constexpr char16_t rightBrace = 125;
inline constexpr char16_t rightParenthesis = 41;
inline constexpr char16_t rightBracket = 93;
inline constexpr char16_t singleQuote = 39;
inline constexpr char16_t slash = 47;
inline constexpr char16_t space = 32;
inline constexpr char16_t tab = 9;
} // namespace UniChar

/// Shown in place of characters that cannot be seen.
namespace InvisibleSymbol {
inline constexpr std::string_view pilcrow = "¶";
inline constexpr std::string_view macron = "¯";
inline constexpr std::string_view middleDot = "·";
inline constexpr std::string_view notSign = "¬";
inline constexpr std::string_view doubleDagger = "‡";
inline constexpr std::string_view noBreakSpace = "\u00A0";
} // namespace InvisibleSymbol

namespace Character {} // keeps its place; nothing stands there so far

/// Virtual key codes of the hardware.
namespace KeyCode {
inline constexpr int tab = 48;
inline constexpr int keypadEnter = 76;
inline constexpr int letterE = 14;
} // namespace KeyCode

} // namespace CorbelKit::Const

// clang-format on
