#include "Platform/PropertyList/Base64.h"

#include "Platform/PropertyList/XMLScalars.h"

#include <array>
#include <span>

namespace Platform::PropertyLists {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr unsigned digitsOfQuantum = 4;
constexpr std::uint8_t noDigit = 0xFF;

constexpr auto digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t value = 0; value < alphabet.size(); ++value)
        values[static_cast<unsigned char>(alphabet[value])] = static_cast<std::uint8_t>(value);
    return values;
}();

} // namespace

bool Base64Decoder::append(std::string_view piece, Receiver& receiver) {
    decoded_.clear();
    for (const char character : piece) {
        if (!isXMLSpace(character) && !take(character))
            return false;
    }
    return decoded_.empty() || receiver.text(decoded_);
}

bool Base64Decoder::take(char character) {
    const bool pad = character == '=';
    const auto value = pad ? std::uint8_t{0} : digitValues[static_cast<unsigned char>(character)];
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

} // namespace Platform::PropertyLists
