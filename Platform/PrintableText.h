#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Platform {

/// How characters are shown that would act on the display: as escapes ("\n", "\u{202E}"), which
/// keep them apart, or as spaces, which read on.
enum class ActingCharacters : std::uint8_t { escaped, spaced };

/// Bytes that somebody else chose, as text that is safe to show on one line. What is not UTF-8
/// shows as U+FFFD. Controls, line and paragraph separators and overrides of the writing direction
/// would act on the display, and characters that show as nothing would make two names look alike.
/// Right-to-left text itself is left alone, and so are joiners and selectors of forms between and
/// after the characters that need them.
std::string printableText(std::string_view bytes, ActingCharacters shown);

} // namespace Platform
