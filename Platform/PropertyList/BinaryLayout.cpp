#include "Platform/PropertyList/BinaryLayout.h"

#include <limits>

namespace Platform::PropertyLists {

namespace {

constexpr std::string_view mark = "bplist00";
constexpr std::size_t trailerSize = 32;
constexpr std::size_t longestNumber = sizeof(std::uint64_t);

bool isNumberSize(std::size_t size) {
    return size >= 1 && size <= longestNumber;
}

// Of what is no object. More than there ever are bytes, so that whoever looks for room finds none.
// (An optional would come back in memory, for which the processor waits: several times an object.)
constexpr auto tooMany = std::numeric_limits<std::uint64_t>::max();

/// A count of 15 says that the count follows as an integer object.
std::uint64_t takeCount(std::uint8_t detail, std::string_view& rest) {
    constexpr std::uint8_t countFollows = 0xF;
    if (detail != countFollows)
        return detail;
    if (rest.empty() || (static_cast<unsigned char>(rest.front()) >> 4) !=
                            static_cast<unsigned>(BinaryKind::integer))
        return tooMany;
    const auto size = std::size_t{1} << (static_cast<unsigned char>(rest.front()) & 0xFU);
    rest.remove_prefix(1);
    if (size > longestNumber || size > rest.size())
        return tooMany;
    const auto count = bigEndian(rest.substr(0, size));
    rest.remove_prefix(size);
    return count;
}

} // namespace

std::optional<BinaryLayout> BinaryLayout::of(std::string_view bytes) {
    if (!bytes.starts_with(mark) || bytes.size() < mark.size() + trailerSize)
        return std::nullopt;
    const auto body = bytes.substr(0, bytes.size() - trailerSize);
    const auto trailer = bytes.substr(body.size());
    BinaryLayout layout;
    layout.offsetSize_ = static_cast<unsigned char>(trailer[6]);
    layout.referenceSize_ = static_cast<unsigned char>(trailer[7]);
    const auto objects = bigEndian(trailer.substr(8, longestNumber));
    layout.top_ = bigEndian(trailer.substr(16, longestNumber));
    const auto tableBegin = bigEndian(trailer.substr(24, longestNumber));
    if (!isNumberSize(layout.offsetSize_) || !isNumberSize(layout.referenceSize_) ||
        tableBegin < mark.size() || tableBegin > body.size())
        return std::nullopt;
    layout.content_ = body.substr(0, tableBegin);
    layout.table_ = body.substr(tableBegin);
    if (objects > layout.table_.size() / layout.offsetSize_)
        return std::nullopt;
    layout.objects_ = objects;
    return layout;
}

std::optional<BinaryObject> BinaryLayout::object(std::uint64_t number) const {
    if (number >= objects_)
        return std::nullopt;
    const auto offset = bigEndian(table_.substr(number * offsetSize_, offsetSize_));
    if (offset < mark.size() || offset >= content_.size())
        return std::nullopt;
    const auto first = static_cast<unsigned char>(content_[offset]);
    const auto kind = static_cast<BinaryKind>(first >> 4);
    const auto detail = static_cast<std::uint8_t>(first & 0xF);
    auto rest = content_.substr(offset + 1);
    const auto size = payloadSize(kind, detail, rest);
    if (size > rest.size())
        return std::nullopt;
    return BinaryObject{.kind = kind, .detail = detail, .payload = rest.substr(0, size)};
}

std::uint64_t BinaryLayout::payloadSize(BinaryKind kind, std::uint8_t detail,
                                        std::string_view& rest) const {
    switch (kind) {
    case BinaryKind::simple:
        return 0;
    case BinaryKind::integer:
    case BinaryKind::real:
    case BinaryKind::date:
        return std::uint64_t{1} << detail;
    case BinaryKind::uid:
        return detail + std::uint64_t{1};
    default:
        const auto each = elementSize(kind);
        const auto count = takeCount(detail, rest);
        // A product within the bytes that are left is one that fits its type.
        return each == 0 || count > rest.size() / each ? tooMany : count * each;
    }
}

std::size_t BinaryLayout::elementSize(BinaryKind kind) const {
    switch (kind) {
    case BinaryKind::data:
    case BinaryKind::ascii:
        return 1;
    case BinaryKind::utf16:
        return 2;
    case BinaryKind::array:
    case BinaryKind::orderedSet:
    case BinaryKind::set:
        return referenceSize_;
    case BinaryKind::dictionary:
        return 2 * referenceSize_;
    default:
        return 0;
    }
}

} // namespace Platform::PropertyLists
