#include "Platform/PropertyList/BinaryObjects.h"

#include "Platform/PropertyList/TextEncodings.h"

#include <algorithm>
#include <bit>

namespace Platform::PropertyLists {

namespace {

constexpr std::size_t wordSize = sizeof(std::uint64_t);

void appendFirstByte(std::string& bytes, BinaryKind kind, std::size_t detail) {
    bytes.push_back(static_cast<char>(static_cast<std::size_t>(kind) << 4 | detail));
}

void appendInteger(std::string& bytes, std::uint64_t number, std::size_t size) {
    appendFirstByte(bytes, BinaryKind::integer, static_cast<std::size_t>(std::countr_zero(size)));
    appendBigEndian(bytes, number, size);
}

struct ScalarBytes {
    std::string& bytes;

    void operator()(PropertyList::Null /*value*/) const {
        appendFirstByte(bytes, BinaryKind::simple, 0x0);
    }

    void operator()(bool value) const {
        appendFirstByte(bytes, BinaryKind::simple, value ? 0x9 : 0x8);
    }

    void operator()(std::int64_t value) const {
        const auto number = static_cast<std::uint64_t>(value);
        appendInteger(bytes, number, smallestSize(number));
    }

    void operator()(std::uint64_t value) const {
        if (std::in_range<std::int64_t>(value)) {
            (*this)(static_cast<std::int64_t>(value));
            return;
        }
        // Eight bytes would be read as a negative number.
        appendFirstByte(bytes, BinaryKind::integer, 4);
        appendBigEndian(bytes, 0, wordSize);
        appendBigEndian(bytes, value, wordSize);
    }

    void operator()(double value) const {
        appendFirstByte(bytes, BinaryKind::real, 3);
        appendBigEndian(bytes, std::bit_cast<std::uint64_t>(value), wordSize);
    }

    void operator()(PropertyList::Date value) const {
        appendFirstByte(bytes, BinaryKind::date, 3);
        const auto seconds = (value - binaryEpoch).count();
        appendBigEndian(bytes, std::bit_cast<std::uint64_t>(seconds), wordSize);
    }

    void operator()(PropertyList::UID value) const {
        const auto size = smallestSize(value.value);
        appendFirstByte(bytes, BinaryKind::uid, size - 1);
        appendBigEndian(bytes, value.value, size);
    }
};

} // namespace

std::string binaryScalar(const Scalar& scalar) {
    std::string bytes;
    std::visit(ScalarBytes{bytes}, scalar);
    return bytes;
}

std::optional<std::string> binaryData(std::string_view data) {
    std::string bytes;
    appendBeginning(bytes, BinaryKind::data, data.size());
    bytes.append(data);
    return bytes;
}

std::optional<std::string> binaryText(std::string_view text) {
    std::string bytes;
    const bool ascii = std::ranges::all_of(
        text, [](char character) { return static_cast<unsigned char>(character) < 0x80; });
    if (ascii) {
        appendBeginning(bytes, BinaryKind::ascii, text.size());
        bytes.append(text);
        return bytes;
    }
    const auto units = toUTF16(text);
    if (!units)
        return std::nullopt;
    appendBeginning(bytes, BinaryKind::utf16, units->size());
    for (const auto unit : *units)
        appendBigEndian(bytes, unit, sizeof(char16_t));
    return bytes;
}

void appendBeginning(std::string& bytes, BinaryKind kind, std::size_t count) {
    constexpr std::size_t countFollows = 0xF;
    appendFirstByte(bytes, kind, std::min(count, countFollows));
    if (count >= countFollows)
        appendInteger(bytes, count, smallestSize(count));
}

void appendBigEndian(std::string& bytes, std::uint64_t number, std::size_t size) {
    for (auto shift = size * 8; shift > 0; shift -= 8)
        bytes.push_back(static_cast<char>(number >> (shift - 8) & 0xFF));
}

std::size_t smallestSize(std::uint64_t number) {
    if (number <= 0xFF)
        return 1;
    if (number <= 0xFFFF)
        return 2;
    return number <= 0xFFFFFFFF ? 4 : wordSize;
}

} // namespace Platform::PropertyLists
