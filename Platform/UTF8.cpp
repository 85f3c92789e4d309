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

constexpr Decoded illFormed(std::size_t length) {
    return {.scalar = U'\uFFFD', .length = length, .wellFormed = false};
}

} // namespace

Decoded decodeFirst(std::string_view bytes) {
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    for (const auto& lead : leads) {
        if (byteAt(0) < lead.first || byteAt(0) > lead.last)
            continue;
        char32_t scalar = byteAt(0) & lead.mask;
        for (std::size_t index = 1; index < lead.length; ++index) {
            const unsigned from = index == 1 ? lead.secondFrom : 0x80;
            const unsigned to = index == 1 ? lead.secondTo : 0xBF;
            if (index == bytes.size() || byteAt(index) < from || byteAt(index) > to)
                return illFormed(index);
            scalar = (scalar << 6) | (byteAt(index) & 0x3FU);
        }
        return {.scalar = scalar, .length = lead.length, .wellFormed = true};
    }
    return illFormed(1);
}

bool isWellFormed(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto character = decodeFirst(bytes);
        if (!character.wellFormed)
            return false;
        bytes.remove_prefix(character.length);
    }
    return true;
}

} // namespace Platform::UTF8
