#include "CorbelKit/Formats/Octal.h"

#include "CorbelKit/Formats/ParsedInteger.h"
#include "Platform/UTF8.h"

#include <array>
#include <charconv>

namespace CorbelKit::Octal {
namespace {

constexpr std::size_t digitCount = 3;

/// What remains of the text behind its first character.
std::string_view behindFirst(std::string_view text) {
    return text.substr(Platform::UTF8::decodeFirst(text).length);
}

std::size_t countCharacters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); text = behindFirst(text))
        ++count;
    return count;
}

} // namespace

std::string string(std::int64_t integer) {
    std::array<char, 23> digits{}; // of 63 bits, with the sign
    const auto end = std::to_chars(digits.begin(), digits.end(), integer, 8).ptr;
    return {digits.begin(), end};
}

std::optional<std::int64_t> integer(std::string_view octal) {
    return parsedInteger(octal, 8);
}

std::string normalized(std::string_view octal) {
    auto count = countCharacters(octal);
    for (; count > digitCount; --count)
        octal = behindFirst(octal);
    return std::string(digitCount - count, '0').append(octal);
}

std::string symbolic(std::string_view octal, Mode mode) {
    auto value = normalized(octal);
    std::string text;
    std::string_view rest = value;
    for (const auto* prefix : {"u=", ",g=", ",o="}) {
        text.append(prefix).append(triple(Platform::UTF8::decodeFirst(rest).scalar, mode));
        rest = behindFirst(rest);
    }
    return text.append(" ").append(value);
}

} // namespace CorbelKit::Octal
