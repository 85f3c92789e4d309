#include "Platform/PrintableText.h"

#include "Platform/UTF8.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace Platform {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Unicode's general category Cc, the separators Zl and Zp, and the explicit direction controls of
// UAX #9.
// NOLINTBEGIN(modernize-use-designated-initializers): rows of a table
constexpr std::array actingCharacters = {
    Range{0x0000, 0x001F}, Range{0x007F, 0x009F}, Range{0x061C, 0x061C},
    Range{0x200E, 0x200F}, Range{0x2028, 0x202E}, Range{0x2066, 0x2069},
};

// NOLINTEND(modernize-use-designated-initializers)

bool actsOnDisplay(char32_t scalar) {
    for (const auto& range : actingCharacters) {
        if (scalar >= range.first && scalar <= range.last)
            return true;
    }
    return false;
}

std::string escape(char32_t scalar) {
    switch (scalar) {
    case U'\n':
        return "\\n";
    case U'\r':
        return "\\r";
    case U'\t':
        return "\\t";
    default:
        break;
    }
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                   static_cast<std::uint32_t>(scalar), 16);
    std::string text = "\\u{";
    for (const char* digit = digits.data(); digit != end.ptr; ++digit)
        text += *digit >= 'a' ? static_cast<char>(*digit - 'a' + 'A') : *digit;
    return text + "}";
}

} // namespace

std::string printableText(std::string_view bytes, ActingCharacters shown) {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const auto character = UTF8::decodeFirst(bytes);
        if (!character.wellFormed) {
            text += "\uFFFD";
        } else if (actsOnDisplay(character.scalar)) {
            text += shown == ActingCharacters::spaced ? " " : escape(character.scalar);
        } else {
            text += bytes.substr(0, character.length);
        }
        bytes.remove_prefix(character.length);
    }
    return text;
}

} // namespace Platform
