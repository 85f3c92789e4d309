#include "Platform/Base64.h"

#include <algorithm>
#include <array>
#include <span>

namespace Platform {
namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view whiteSpace = " \t\r\n";
constexpr std::size_t digitsOfQuantum = 4;
constexpr std::size_t octetsOfQuantum = 3;
constexpr std::uint8_t noDigit = 0xFF;
constexpr std::uint8_t ignored = 0xFE;

constexpr auto digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t value = 0; value < alphabet.size(); ++value)
        values[static_cast<unsigned char>(alphabet[value])] = static_cast<std::uint8_t>(value);
    for (const char space : whiteSpace)
        values[static_cast<unsigned char>(space)] = ignored;
    return values;
}();

/// The digits of up to three octets, padded.
std::array<char, digitsOfQuantum> encode(std::string_view octets) {
    std::uint32_t quantum = 0;
    for (std::size_t index = 0; index < octetsOfQuantum; ++index) {
        quantum <<= 8;
        if (index < octets.size())
            quantum |= static_cast<unsigned char>(octets[index]);
    }
    std::array digits{alphabet[quantum >> 18], alphabet[quantum >> 12 & 0x3F],
                      alphabet[quantum >> 6 & 0x3F], alphabet[quantum & 0x3F]};
    std::ranges::fill(std::span(digits).subspan(octets.size() + 1), '=');
    return digits;
}

} // namespace

std::string base64EncodedString(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + octetsOfQuantum - 1) / octetsOfQuantum * digitsOfQuantum);
    for (std::size_t position = 0; position < bytes.size(); position += octetsOfQuantum) {
        const auto digits = encode(bytes.substr(position, octetsOfQuantum));
        text.append(digits.data(), digits.size());
    }
    return text;
}

std::optional<PropertyList::Data> base64DecodedData(std::string_view text) {
    Base64Decoder decoder;
    const auto decoded = decoder.append(text);
    if (!decoded || !decoder.isComplete())
        return std::nullopt;
    const auto bytes = std::as_bytes(std::span(*decoded));
    return PropertyList::Data(bytes.begin(), bytes.end());
}

std::optional<std::string_view> Base64Decoder::append(std::string_view piece) {
    decoded_.clear();
    if (!std::ranges::all_of(piece, [this](char character) { return take(character); }))
        return std::nullopt;
    return decoded_;
}

bool Base64Decoder::take(char character) {
    const bool pad = character == '=';
    const auto value = pad ? std::uint8_t{0} : digitValues[static_cast<unsigned char>(character)];
    if (value == ignored)
        return true;
    // Padding fills the last quantum up, and ends the data.
    if (value == noDigit || (pad ? digits_ < 2 : padding_ > 0))
        return false;
    padding_ += pad ? 1 : 0;
    quantum_ = quantum_ << 6 | value;
    if (++digits_ < digitsOfQuantum)
        return true;
    const std::array octets{quantum_ >> 16, quantum_ >> 8, quantum_};
    for (const auto octet : std::span(octets).first(octets.size() - padding_))
        decoded_.push_back(static_cast<char>(octet & 0xFF));
    digits_ = 0;
    return true;
}

} // namespace Platform
