#include "Platform/PrintableText.h"

#include "Platform/UTF8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace Platform {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Unicode's general category Cc, the separators Zl and Zp, the explicit direction controls of UAX
// #9, and what shows as nothing (Default_Ignorable_Code_Point, and the annotations at U+FFF9).
// NOLINTBEGIN(modernize-use-designated-initializers): rows of a table
constexpr std::array actingCharacters = {
    Range{0x0000, 0x001F},   Range{0x007F, 0x009F},   Range{0x00AD, 0x00AD},
    Range{0x034F, 0x034F},   Range{0x061C, 0x061C},   Range{0x115F, 0x1160},
    Range{0x17B4, 0x17B5},   Range{0x180B, 0x180F},   Range{0x200B, 0x200F},
    Range{0x2028, 0x202E},   Range{0x2060, 0x206F},   Range{0x3164, 0x3164},
    Range{0xFE00, 0xFE0F},   Range{0xFEFF, 0xFEFF},   Range{0xFFA0, 0xFFA0},
    Range{0xFFF0, 0xFFFB},   Range{0x1BCA0, 0x1BCA3}, Range{0x1D173, 0x1D17A},
    Range{0xE0000, 0xE0FFF},
};

// What a joiner has a meaning between: letters of scripts from Hebrew to those of India and
// Mongolia, their presentation forms, and the pictures and selectors of which emoji are made.
constexpr std::array joinedCharacters = {
    Range{0x0590, 0x1CFF}, Range{0x2190, 0x2BFF},   Range{0xA840, 0xABFF},
    Range{0xFB1D, 0xFEFC}, Range{0x10A00, 0x11FFF}, Range{0x1F000, 0x1FAFF},
};

constexpr std::array joiners = {Range{0x200C, 0x200D}};

// They choose among forms of the character before, which is none of the alphabets of Europe.
constexpr std::array formSelectors = {Range{0x180B, 0x180D}, Range{0x180F, 0x180F},
                                      Range{0xFE00, 0xFE0F}, Range{0xE0100, 0xE01EF}};
constexpr char32_t firstWithForms = 0x1000;

// NOLINTEND(modernize-use-designated-initializers)

bool isIn(const auto& ranges, char32_t scalar) {
    return std::ranges::any_of(ranges, [scalar](const Range& range) {
        return scalar >= range.first && scalar <= range.last;
    });
}

/// Whether the character is part of how its neighbours are written; 0: none.
bool isOfNeighbours(char32_t before, char32_t scalar, char32_t after) {
    if (isIn(joiners, scalar))
        return isIn(joinedCharacters, before) && isIn(joinedCharacters, after);
    return isIn(formSelectors, scalar) && before >= firstWithForms &&
           !isIn(actingCharacters, before);
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
    char32_t before = 0;
    while (!bytes.empty()) {
        const auto character = UTF8::decodeFirst(bytes);
        const auto rest = bytes.substr(character.length);
        const auto after = rest.empty() ? 0 : UTF8::decodeFirst(rest).scalar;
        if (!character.wellFormed) {
            text += "\uFFFD";
        } else if (isIn(actingCharacters, character.scalar) &&
                   !isOfNeighbours(before, character.scalar, after)) {
            text += shown == ActingCharacters::spaced ? " " : escape(character.scalar);
        } else {
            text += bytes.substr(0, character.length);
        }
        before = character.scalar;
        bytes = rest;
    }
    return text;
}

} // namespace Platform
