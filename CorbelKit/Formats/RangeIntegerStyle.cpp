#include "CorbelKit/Formats/RangeIntegerStyle.h"

#include "CorbelKit/Coding/Coding.h"
#include "CorbelKit/Formats/ParsedInteger.h"

#include <algorithm>

namespace CorbelKit {
namespace {

namespace Key {
constexpr std::string_view parseStrategy = "parseStrategy";
constexpr std::string_view range = "range";
} // namespace Key

} // namespace

ClosedRange ClosedRange::decode(const Decoder& decoder) {
    auto container = decoder.unkeyedContainer();
    const auto lower = container.decode<std::int64_t>();
    const auto upper = container.decode<std::int64_t>();
    if (lower > upper) {
        decoder.fail(CodingError::Kind::dataCorrupted,
                     "The range's lower bound " + std::to_string(lower) +
                         " is above its upper bound " + std::to_string(upper) + ".");
    }
    return {.lowerBound = lower, .upperBound = upper};
}

void ClosedRange::encode(Encoder& encoder) const {
    auto container = encoder.unkeyedContainer();
    container.encode(lowerBound);
    container.encode(upperBound);
}

std::int64_t RangeIntegerStrategy::parse(std::string_view text) {
    return parsedInteger(text, 10).value_or(0);
}

RangeIntegerStrategy RangeIntegerStrategy::decode(const Decoder& decoder) {
    decoder.container();
    return {};
}

void RangeIntegerStrategy::encode(Encoder& encoder) const {
    encoder.container();
}

std::string RangeIntegerStyle::format(std::int64_t value) const {
    return std::to_string(std::min(std::max(value, range.lowerBound), range.upperBound));
}

RangeIntegerStyle RangeIntegerStyle::decode(const Decoder& decoder) {
    const auto container = decoder.container();
    return {.parseStrategy = container.decode<RangeIntegerStrategy>(Key::parseStrategy),
            .range = container.decode<ClosedRange>(Key::range)};
}

void RangeIntegerStyle::encode(Encoder& encoder) const {
    auto container = encoder.container();
    container.encode(Key::parseStrategy, parseStrategy);
    container.encode(Key::range, range);
}

} // namespace CorbelKit

std::size_t std::hash<CorbelKit::RangeIntegerStyle>::operator()(
    const CorbelKit::RangeIntegerStyle& style) const noexcept {
    const std::hash<std::int64_t> hashOf;
    return hashOf(style.range.lowerBound) * 31 + hashOf(style.range.upperBound);
}
