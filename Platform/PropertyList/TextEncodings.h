#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Platform::PropertyLists {

enum class ByteOrder : std::uint8_t { big, little };

// The two halves of a character that takes two units of UTF-16.
bool isLeadSurrogate(char32_t unit);
bool isTrailSurrogate(char32_t unit);
char32_t fromSurrogates(char32_t lead, char32_t trail);

/// A surrogate without its other half becomes U+FFFD: a list with a damaged text is still a list.
void appendUTF8(std::string& text, char32_t character);

/// UTF-8 from the code units in `bytes`, by the same rule; an odd last byte is left out.
std::string fromUTF16(std::string_view bytes, ByteOrder order);

/// Absent when the text is not UTF-8.
std::optional<std::u16string> toUTF16(std::string_view text);

/// The character of the NeXTSTEP encoding, in which octal escapes of the old-style form are meant.
char16_t fromNextStep(unsigned char code);

} // namespace Platform::PropertyLists
