#include "Platform/PropertyList/TextEncodings.h"

#include "Platform/UTF8.h"

#include <array>

namespace Platform::PropertyLists {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t largestCharacter = 0x10FFFF;
constexpr char32_t firstBeyondOneUnit = 0x10000;
constexpr char16_t firstLead = 0xD800;
constexpr char16_t firstTrail = 0xDC00;
constexpr char16_t lastTrail = 0xDFFF;

constexpr std::array<char16_t, 128> upperNextStep = {
    0x00A0, 0x00C0, 0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB,
    0x00CC, 0x00CD, 0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D9,
    0x00DA, 0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00B5, 0x00D7, 0x00F7, 0x00A9, 0x00A1, 0x00A2, 0x00A3,
    0x2044, 0x00A5, 0x0192, 0x00A7, 0x00A4, 0x2019, 0x201C, 0x00AB, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x00AE, 0x2013, 0x2020, 0x2021, 0x00B7, 0x00A6, 0x00B6, 0x2022, 0x201A, 0x201E, 0x201D, 0x00BB,
    0x2026, 0x2030, 0x00AC, 0x00BF, 0x00B9, 0x02CB, 0x00B4, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9,
    0x00A8, 0x00B2, 0x02DA, 0x00B8, 0x00B3, 0x02DD, 0x02DB, 0x02C7, 0x2014, 0x00B1, 0x00BC, 0x00BD,
    0x00BE, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5, 0x00E7, 0x00E8, 0x00E9, 0x00EA, 0x00EB,
    0x00EC, 0x00C6, 0x00ED, 0x00AA, 0x00EE, 0x00EF, 0x00F0, 0x00F1, 0x0141, 0x00D8, 0x0152, 0x00BA,
    0x00F2, 0x00F3, 0x00F4, 0x00F5, 0x00F6, 0x00E6, 0x00F9, 0x00FA, 0x00FB, 0x0131, 0x00FC, 0x00FD,
    0x0142, 0x00F8, 0x0153, 0x00DF, 0x00FE, 0x00FF, 0xFFFD, 0xFFFD};

char16_t takeUnit(std::string_view& bytes, ByteOrder order) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    const auto second = static_cast<unsigned char>(bytes[1]);
    bytes.remove_prefix(sizeof(char16_t));
    return static_cast<char16_t>(order == ByteOrder::big ? first << 8 | second
                                                         : second << 8 | first);
}

/// The six bits of a character above `shift`, as a byte that does not begin one (RFC 3629).
char continuation(char32_t character, unsigned shift) {
    return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
}

} // namespace

bool isLeadSurrogate(char32_t unit) {
    return unit >= firstLead && unit < firstTrail;
}

bool isTrailSurrogate(char32_t unit) {
    return unit >= firstTrail && unit <= lastTrail;
}

char32_t fromSurrogates(char32_t lead, char32_t trail) {
    return firstBeyondOneUnit + ((lead - firstLead) << 10U) + (trail - firstTrail);
}

void appendUTF8(std::string& text, char32_t character) {
    if (isLeadSurrogate(character) || isTrailSurrogate(character) || character > largestCharacter)
        character = replacement;
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text.append({static_cast<char>(0xC0U | character >> 6U), continuation(character, 0)});
    } else if (character < firstBeyondOneUnit) {
        text.append({static_cast<char>(0xE0U | character >> 12U), continuation(character, 6),
                     continuation(character, 0)});
    } else {
        text.append({static_cast<char>(0xF0U | character >> 18U), continuation(character, 12),
                     continuation(character, 6), continuation(character, 0)});
    }
}

std::string fromUTF16(std::string_view bytes, ByteOrder order) {
    std::string text;
    text.reserve(bytes.size() / sizeof(char16_t));
    while (bytes.size() >= sizeof(char16_t)) {
        char32_t character = takeUnit(bytes, order);
        if (isLeadSurrogate(character) && bytes.size() >= sizeof(char16_t)) {
            auto behindTrail = bytes;
            const auto trail = takeUnit(behindTrail, order);
            if (isTrailSurrogate(trail)) {
                character = fromSurrogates(character, trail);
                bytes = behindTrail;
            }
        }
        appendUTF8(text, character);
    }
    return text;
}

std::optional<std::u16string> toUTF16(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    while (!text.empty()) {
        const auto [scalar, length, wellFormed] = UTF8::decodeFirst(text);
        if (!wellFormed)
            return std::nullopt;
        text.remove_prefix(length);
        if (scalar < firstBeyondOneUnit) {
            units += static_cast<char16_t>(scalar);
        } else {
            const auto rest = scalar - firstBeyondOneUnit;
            units += static_cast<char16_t>(firstLead + (rest >> 10U));
            units += static_cast<char16_t>(firstTrail + (rest & 0x3FFU));
        }
    }
    return units;
}

char16_t fromNextStep(unsigned char code) {
    return code < 0x80 ? code : upperNextStep[code - 0x80U];
}

} // namespace Platform::PropertyLists
