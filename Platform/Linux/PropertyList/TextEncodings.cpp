#include "Platform/Linux/PropertyList/TextEncodings.h"

#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <span>

namespace Platform::PropertyLists {

namespace {

constexpr char32_t replacement = 0xFFFD;

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

/// ICU counts in 32 bits.
std::int32_t lengthOf(const auto& text) {
    return static_cast<std::int32_t>(text.size());
}

bool isTooLong(std::string_view text) {
    return text.size() > std::size_t{std::numeric_limits<std::int32_t>::max()};
}

/// A text is converted in blocks, so that a long one does not take its size several times over.
using Block = std::array<char16_t, 512>;

std::size_t takeUnits(std::string_view& bytes, ByteOrder order, Block& units) {
    auto count = std::min(units.size(), bytes.size() / sizeof(char16_t));
    for (std::size_t index = 0; index < count; ++index) {
        const auto first = static_cast<unsigned char>(bytes[2 * index]);
        const auto second = static_cast<unsigned char>(bytes[2 * index + 1]);
        units[index] = static_cast<char16_t>(order == ByteOrder::big ? first << 8 | second
                                                                     : second << 8 | first);
    }
    // The second half of a pair may stand in the next block.
    if (count == units.size() && U16_IS_LEAD(units.back()))
        --count;
    bytes.remove_prefix(count * sizeof(char16_t));
    return count;
}

} // namespace

bool isUTF8(std::string_view text) {
    if (isTooLong(text))
        return false;
    auto status = U_ZERO_ERROR;
    std::int32_t units = 0;
    const std::span<const char> source(text);
    u_strFromUTF8(nullptr, 0, &units, source.data(), lengthOf(source), &status);
    return U_SUCCESS(status) || status == U_BUFFER_OVERFLOW_ERROR;
}

void appendUTF8(std::string& text, char32_t character) {
    if (U_IS_SURROGATE(character) || character > 0x10FFFF)
        character = replacement;
    std::array<std::uint8_t, U8_MAX_LENGTH> bytes{};
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, character);
    for (std::size_t index = 0; index < length; ++index)
        text.push_back(static_cast<char>(bytes[index]));
}

std::string fromUTF16(std::string_view bytes, ByteOrder order) {
    std::string text;
    text.reserve(bytes.size() / 2);
    while (bytes.size() >= sizeof(char16_t)) {
        Block units{};
        const auto count = takeUnits(bytes, order, units);
        std::array<char, 3 * units.size()> converted{};
        auto status = U_ZERO_ERROR;
        std::int32_t length = 0;
        u_strToUTF8WithSub(converted.data(), lengthOf(converted), &length, units.data(),
                           static_cast<std::int32_t>(count), replacement, nullptr, &status);
        text.append(converted.data(), static_cast<std::size_t>(length));
    }
    return text;
}

std::optional<std::u16string> toUTF16(std::string_view text) {
    if (isTooLong(text))
        return std::nullopt;
    std::u16string units(text.size(), u'\0');
    auto status = U_ZERO_ERROR;
    std::int32_t length = 0;
    const std::span<const char> source(text);
    u_strFromUTF8(units.data(), lengthOf(units), &length, source.data(), lengthOf(source), &status);
    if (U_FAILURE(status))
        return std::nullopt;
    units.resize(static_cast<std::size_t>(length));
    return units;
}

char16_t fromNextStep(unsigned char code) {
    return code < 0x80 ? code : upperNextStep[code - 0x80U];
}

} // namespace Platform::PropertyLists
