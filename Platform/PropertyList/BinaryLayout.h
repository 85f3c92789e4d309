#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace Platform::PropertyLists {

/// The high half of an object's first byte in a binary property list.
enum class BinaryKind : std::uint8_t {
    simple = 0x0,
    integer = 0x1,
    real = 0x2,
    date = 0x3,
    data = 0x4,
    ascii = 0x5,
    utf16 = 0x6,
    uid = 0x8,
    array = 0xA,
    orderedSet = 0xB,
    set = 0xC,
    dictionary = 0xD,
};

struct BinaryObject {
    BinaryKind kind;
    std::uint8_t detail; ///< the low half of the first byte
    /// The object's bytes; of a container, its references, a dictionary's keys before its values.
    std::string_view payload;
};

/// Of as many bytes as are named, which compilers make one instruction of.
template <std::size_t... Index>
constexpr std::uint64_t bigEndian(std::string_view bytes, std::index_sequence<Index...> /*each*/) {
    constexpr std::size_t last = sizeof...(Index) - 1;
    return (... |
            (std::uint64_t{static_cast<unsigned char>(bytes[Index])} << (8 * (last - Index))));
}

/// Of at most eight bytes. Several times for each object.
inline std::uint64_t bigEndian(std::string_view bytes) {
    switch (bytes.size()) {
    case 1:
        return static_cast<unsigned char>(bytes.front());
    case 2:
        return bigEndian(bytes, std::make_index_sequence<2>());
    case 4:
        return bigEndian(bytes, std::make_index_sequence<4>());
    case 8:
        return bigEndian(bytes, std::make_index_sequence<8>());
    default:
        std::uint64_t number = 0;
        for (const char byte : bytes)
            number = number << 8 | static_cast<unsigned char>(byte);
        return number;
    }
}

/// The trailer and the table of offsets. Whatever it hands out lies within the bytes.
class BinaryLayout {
public:
    /// Absent when the bytes are no binary property list.
    static std::optional<BinaryLayout> of(std::string_view bytes);

    /// Absent when there is no such object, or it is none, or it does not lie before the table.
    std::optional<BinaryObject> object(std::uint64_t number) const;

    std::uint64_t top() const { return top_; }

    std::size_t objects() const { return objects_; }

    std::size_t referenceSize() const { return referenceSize_; }

private:
    std::uint64_t payloadSize(BinaryKind kind, std::uint8_t detail, std::string_view& rest) const;
    std::size_t elementSize(BinaryKind kind) const;

    std::string_view content_; ///< all before the table
    std::string_view table_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::size_t objects_ = 0;
    std::uint64_t top_ = 0;
};

} // namespace Platform::PropertyLists
