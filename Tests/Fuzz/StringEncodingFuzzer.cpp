#include "CorbelKit/Formats/StringEncoding.h"
#include "Platform/TextServices.h"

#include <cstdio>
#include <cstdlib>

namespace {

/// The whole text as code units, by the definition of RFC 3629; nothing where it is not UTF-8.
std::optional<std::u16string> decoded(const std::string& bytes) {
    std::u16string units;
    for (std::size_t index = 0; index < bytes.size();) {
        const auto byte = static_cast<unsigned char>(bytes[index++]);
        const int more = byte < 0x80 ? 0 : byte < 0xC0 ? -1 : byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
        if (more < 0 || byte > 0xF7)
            return std::nullopt;
        char32_t scalar = more == 0 ? byte : byte & (0x3FU >> more);
        for (int step = 0; step < more; ++step) {
            if (index == bytes.size() || (static_cast<unsigned char>(bytes[index]) & 0xC0U) != 0x80)
                return std::nullopt;
            scalar = scalar << 6 | (static_cast<unsigned char>(bytes[index++]) & 0x3FU);
        }
        constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
        if (scalar < smallest[more] || scalar > 0x10FFFF || (scalar >= 0xD800 && scalar < 0xE000))
            return std::nullopt;
        if (scalar >= 0x10000) {
            units += static_cast<char16_t>(0xD7C0 + (scalar >> 10));
            scalar = 0xDC00 + (scalar & 0x3FF);
        }
        units += static_cast<char16_t>(scalar);
    }
    return units;
}

/// The number of the name that the units spell, which must be ASCII as every name is.
std::int64_t encodingNamed(const std::u16string& units) {
    std::string name;
    for (const auto unit : units)
        name += unit < 0x80 ? static_cast<char>(unit) : '\xFF';
    return Platform::TextServices::encodingForIANACharSetName(name).value_or(0);
}

/// The guess made one step after the other on a text decoded as a whole.
std::int64_t slowGuess(const std::string& bytes) {
    const auto text = decoded(bytes);
    if (!text || text->size() < 10)
        return 0;
    if (const auto charset = text->find(u"charset="); charset != text->npos) {
        const auto name = text->substr(charset + 8);
        return encodingNamed(name.substr(0, name.find_first_of(u"\" ';>")));
    }
    if (const auto encoding = text->find(u"encoding="); encoding != text->npos) {
        auto name = text->substr(encoding + 9);
        name = name.substr(name.empty() ? 0 : 1);
        name = name.substr(0, name.find(u"?>"));
        if (name.starts_with(u'"'))
            name.erase(0, 1);
        if (name.ends_with(u'"'))
            name.pop_back();
        // The second half of a character that was skipped in part cannot begin a name.
        return !name.empty() && (name.front() & 0xFC00) == 0xDC00 ? encodingNamed(name.substr(1))
                                                                  : encodingNamed(name);
    }
    return bytes.starts_with("\xEF\xBB\xBF") ? 4 : 0;
}

void check(const std::string& bytes) {
    if (CorbelKit::guessEncoding(std::as_bytes(std::span(bytes))) == slowGuess(bytes))
        return;
    std::fprintf(stderr, "not so: the guess is the one of the slow way\n");
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    check(text);
    // Behind a long beginning at times, so that words and characters lie across the parts in which
    // the text is read.
    if (size % 16 == 0)
        check(std::string(16'384 - size / 2, ' ') + text);
    return 0;
}
