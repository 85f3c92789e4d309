#include "Platform/UUID.h"

#include <random>

namespace Platform {
namespace {

constexpr std::size_t textLength = 36;
constexpr std::string_view digits = "0123456789ABCDEFabcdef"; // written with the first 16

constexpr bool hasHyphenBefore(std::size_t byte) {
    return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

std::optional<std::size_t> valueOf(char digit) {
    const auto place = digits.find(digit);
    if (place == std::string_view::npos)
        return std::nullopt;
    return place < 16 ? place : place - 6;
}

} // namespace

UUID UUID::random() noexcept {
    std::random_device source;
    std::uniform_int_distribution<unsigned> any(0, 255);
    Bytes bytes{};
    for (auto& byte : bytes)
        byte = static_cast<std::byte>(any(source));
    bytes[6] = (bytes[6] & std::byte{0x0F}) | std::byte{0x40}; // version 4
    bytes[8] = (bytes[8] & std::byte{0x3F}) | std::byte{0x80}; // the variant of RFC 9562
    return UUID(bytes);
}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textLength)
        return std::nullopt;
    Bytes bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (hasHyphenBefore(i)) {
            if (!text.starts_with('-'))
                return std::nullopt;
            text.remove_prefix(1);
        }
        const auto high = valueOf(text[0]);
        const auto low = valueOf(text[1]);
        if (!high || !low)
            return std::nullopt;
        bytes[i] = static_cast<std::byte>(*high << 4U | *low);
        text.remove_prefix(2);
    }
    return UUID(bytes);
}

std::string UUID::string() const {
    std::string text;
    text.reserve(textLength);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (hasHyphenBefore(i))
            text += '-';
        const auto value = std::to_integer<std::size_t>(bytes_[i]);
        text += digits[value >> 4U];
        text += digits[value & 0x0FU];
    }
    return text;
}

} // namespace Platform

std::size_t std::hash<Platform::UUID>::operator()(const Platform::UUID& identifier) const noexcept {
    const auto& bytes = identifier.bytes();
    return std::hash<std::string_view>()(
        {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}
