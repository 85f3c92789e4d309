#include "Platform/UTF8.h"

#include <array>

namespace Platform::UTF8 {
namespace {

// What may begin a character, and what may follow: table 3-7 of the Unicode standard.
struct Lead {
    unsigned char first;
    unsigned char last;
    unsigned char length;
    unsigned char secondFrom;
    unsigned char secondTo;
    unsigned char mask; // of the bits that the lead byte contributes
};

// NOLINTBEGIN(modernize-use-designated-initializers): rows of a table
constexpr std::array leads = {
    Lead{0x00, 0x7F, 1, 0x00, 0x00, 0x7F}, Lead{0xC2, 0xDF, 2, 0x80, 0xBF, 0x1F},
    Lead{0xE0, 0xE0, 3, 0xA0, 0xBF, 0x0F}, Lead{0xE1, 0xEC, 3, 0x80, 0xBF, 0x0F},
    Lead{0xED, 0xED, 3, 0x80, 0x9F, 0x0F}, Lead{0xEE, 0xEF, 3, 0x80, 0xBF, 0x0F},
    Lead{0xF0, 0xF0, 4, 0x90, 0xBF, 0x07}, Lead{0xF1, 0xF3, 4, 0x80, 0xBF, 0x07},
    Lead{0xF4, 0xF4, 4, 0x80, 0x8F, 0x07},
};

// NOLINTEND(modernize-use-designated-initializers)

// The row of each byte; of length 0 where it begins no character.
constexpr auto leadOf = [] {
    std::array<Lead, 256> table{};
    for (const auto& lead : leads) {
        for (std::size_t byte = lead.first; byte <= lead.last; ++byte)
            table[byte] = lead;
    }
    return table;
}();

/// The length of the ASCII that the bytes begin with, looked for in runs that the compiler takes at
/// once.
std::size_t asciiLength(std::string_view bytes) {
    constexpr std::size_t run = 64;
    const auto isOther = [](char byte) { return static_cast<signed char>(byte) < 0; };
    const char* const begin = bytes.data();
    const char* const end = begin + bytes.size();
    const char* read = begin;
    for (; static_cast<std::size_t>(end - read) >= run; read += run) {
        char all = 0;
        for (std::size_t index = 0; index < run; ++index)
            all = static_cast<char>(all | read[index]);
        if (isOther(all))
            break;
    }
    while (read != end && !isOther(*read))
        ++read;
    return static_cast<std::size_t>(read - begin);
}

constexpr Decoded illFormed(std::size_t length) {
    return {.scalar = U'\uFFFD', .length = length, .wellFormed = false};
}

inline Decoded decode(const char* bytes, std::size_t size) {
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    const auto& lead = leadOf[byteAt(0)];
    if (lead.length == 0)
        return illFormed(1);
    char32_t scalar = byteAt(0) & lead.mask;
    for (std::size_t index = 1; index < lead.length; ++index) {
        const unsigned from = index == 1 ? lead.secondFrom : 0x80;
        const unsigned to = index == 1 ? lead.secondTo : 0xBF;
        if (index == size || byteAt(index) < from || byteAt(index) > to)
            return illFormed(index);
        scalar = (scalar << 6) | (byteAt(index) & 0x3FU);
    }
    return {.scalar = scalar, .length = lead.length, .wellFormed = true};
}

} // namespace

Decoded decodeFirst(std::string_view bytes) {
    return decode(bytes.data(), bytes.size());
}

bool isWellFormed(std::string_view bytes) {
    while (!bytes.empty()) {
        if (static_cast<signed char>(bytes.front()) >= 0) {
            bytes.remove_prefix(asciiLength(bytes));
            continue;
        }
        const auto character = decode(bytes.data(), bytes.size());
        if (!character.wellFormed)
            return false;
        bytes.remove_prefix(character.length);
    }
    return true;
}

} // namespace Platform::UTF8
