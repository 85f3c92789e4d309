#include "Platform/PropertyList/BinaryReader.h"

#include "Platform/PropertyList/BinaryLayout.h"
#include "Platform/PropertyList/BinaryObjects.h"
#include "Platform/PropertyList/TextEncodings.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <optional>
#include <vector>

namespace Platform::PropertyLists {

namespace {

std::optional<Scalar> simple(std::uint8_t detail) {
    switch (detail) {
    case 0x8:
        return false;
    case 0x9:
        return true;
    case 0x0:
    case 0xF: // filling
        return PropertyList::Null();
    default:
        return std::nullopt;
    }
}

Scalar unsignedInteger(std::uint64_t number) {
    if (std::in_range<std::int64_t>(number))
        return static_cast<std::int64_t>(number);
    return number;
}

/// One, two and four bytes are unsigned, eight are signed, and sixteen hold what is beyond eight.
std::optional<Scalar> integer(std::string_view payload) {
    constexpr std::size_t word = sizeof(std::uint64_t);
    if (payload.size() < word)
        return unsignedInteger(bigEndian(payload));
    const auto low = bigEndian(payload.substr(payload.size() - word));
    if (payload.size() == word)
        return static_cast<std::int64_t>(low);
    const auto high = bigEndian(payload.substr(0, word));
    if (payload.size() != 2 * word)
        return std::nullopt;
    if (high == 0)
        return unsignedInteger(low);
    if (high == std::numeric_limits<std::uint64_t>::max() && !std::in_range<std::int64_t>(low))
        return static_cast<std::int64_t>(low);
    return std::nullopt;
}

std::optional<double> real(std::string_view payload) {
    if (payload.size() == sizeof(double))
        return std::bit_cast<double>(bigEndian(payload));
    if (payload.size() == sizeof(float))
        return std::bit_cast<float>(static_cast<std::uint32_t>(bigEndian(payload)));
    return std::nullopt;
}

std::optional<Scalar> date(std::string_view payload) {
    const auto seconds = payload.size() == sizeof(double) ? real(payload) : std::nullopt;
    if (!seconds)
        return std::nullopt;
    return binaryEpoch + std::chrono::duration<double>(*seconds);
}

std::optional<Scalar> uid(std::string_view payload) {
    const auto significant =
        payload.substr(std::min(payload.find_first_not_of('\0'), payload.size()));
    if (significant.size() > sizeof(std::uint64_t))
        return std::nullopt;
    return PropertyList::UID{bigEndian(significant)};
}

std::optional<Scalar> scalarOf(const BinaryObject& object) {
    switch (object.kind) {
    case BinaryKind::simple:
        return simple(object.detail);
    case BinaryKind::integer:
        return integer(object.payload);
    case BinaryKind::real:
        if (const auto number = real(object.payload))
            return *number;
        return std::nullopt;
    case BinaryKind::date:
        return date(object.payload);
    case BinaryKind::uid:
        return uid(object.payload);
    default:
        return std::nullopt;
    }
}

class BinaryReader {
public:
    BinaryReader(const BinaryLayout& layout, Receiver& receiver, std::size_t depth)
        : layout_(layout)
        , receiver_(receiver)
        , depth_(depth)
        , isOpen_(layout.objects()) {}

    bool read() {
        if (!value(layout_.top()))
            return false;
        while (!containers_.empty()) {
            if (!advance())
                return false;
        }
        return true;
    }

private:
    struct Container {
        std::uint64_t object;
        std::string_view references;
        bool isDictionary;
        std::size_t count;
        std::size_t next = 0;
    };

    bool advance() {
        auto& container = containers_.back();
        if (container.next == container.count)
            return close();
        const auto index = container.next++;
        if (!container.isDictionary)
            return value(reference(container, index));
        const auto number = reference(container, container.count + index);
        return key(reference(container, index)) && value(number);
    }

    bool close() {
        const auto container = containers_.back();
        containers_.pop_back();
        isOpen_[container.object] = false;
        return container.isDictionary ? receiver_.endDictionary() : receiver_.endArray();
    }

    std::uint64_t reference(const Container& container, std::size_t index) const {
        const auto size = layout_.referenceSize();
        return bigEndian(container.references.substr(index * size, size));
    }

    bool key(std::uint64_t number) {
        const auto object = layout_.object(number);
        return object && (object->kind == BinaryKind::ascii || object->kind == BinaryKind::utf16) &&
               text(TextKind::key, *object);
    }

    bool value(std::uint64_t number) {
        const auto object = layout_.object(number);
        if (!object)
            return false;
        switch (object->kind) {
        case BinaryKind::data:
            return receiver_.wholeText(TextKind::data, object->payload);
        case BinaryKind::ascii:
        case BinaryKind::utf16:
            return text(TextKind::string, *object);
        case BinaryKind::array:
        case BinaryKind::orderedSet:
        case BinaryKind::set:
        case BinaryKind::dictionary:
            return open(number, *object);
        default:
            const auto scalar = scalarOf(*object);
            return scalar && receiver_.scalar(*scalar);
        }
    }

    bool text(TextKind kind, const BinaryObject& object) {
        if (object.kind == BinaryKind::utf16)
            return receiver_.wholeText(kind, fromUTF16(object.payload, ByteOrder::big));
        const bool ascii = std::ranges::all_of(
            object.payload, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
        return ascii && receiver_.wholeText(kind, object.payload);
    }

    bool open(std::uint64_t number, const BinaryObject& object) {
        // A container that is met within itself has no end.
        if (containers_.size() >= depth_ || isOpen_[number])
            return false;
        isOpen_[number] = true;
        const bool isDictionary = object.kind == BinaryKind::dictionary;
        const auto references = object.payload.size() / layout_.referenceSize();
        containers_.push_back(
            {number, object.payload, isDictionary, isDictionary ? references / 2 : references});
        if (isDictionary)
            return receiver_.beginDictionary();
        return receiver_.beginArray() && receiver_.expectValues(references);
    }

    const BinaryLayout& layout_;
    Receiver& receiver_;
    std::size_t depth_;
    std::vector<Container> containers_;
    std::vector<bool> isOpen_;
};

} // namespace

bool readBinary(std::string_view bytes, Receiver& receiver, std::size_t depth) {
    const auto layout = BinaryLayout::of(bytes);
    return layout && BinaryReader(*layout, receiver, depth).read();
}

} // namespace Platform::PropertyLists
