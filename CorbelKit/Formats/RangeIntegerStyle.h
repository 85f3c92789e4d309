#pragma once

#include "CorbelKit/Coding/Decoder.h"
#include "CorbelKit/Coding/Encoder.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace CorbelKit {

/// Both bounds belong to the range, and the upper one is not below the lower one. A plain value.
struct ClosedRange {
    std::int64_t lowerBound = 0; ///< the least
    std::int64_t upperBound = 0; ///< the greatest

    static ClosedRange decode(const Decoder& decoder);
    void encode(Encoder& encoder) const;

    friend bool operator==(const ClosedRange&, const ClosedRange&) = default;
};

/// Takes any text for an integer. A plain value.
struct RangeIntegerStrategy {
    /// Decimal digits, with a sign or none; 0 for anything else, and beyond 64 bits.
    static std::int64_t parse(std::string_view text);

    static RangeIntegerStrategy decode(const Decoder& decoder);
    void encode(Encoder& encoder) const;

    friend bool operator==(const RangeIntegerStrategy&, const RangeIntegerStrategy&) = default;
};

/// Shows an integer as the nearest one of a range. What is parsed is not clamped: it is when it is
/// shown again. A plain value.
struct RangeIntegerStyle {
    RangeIntegerStrategy parseStrategy; ///< how a text that was typed is read
    ClosedRange range;                  ///< what is shown

    /// Plain decimal digits, alike in every locale.
    std::string format(std::int64_t value) const;

    /// The style for a locale: this one.
    RangeIntegerStyle locale(std::string_view /*identifier*/) const { return *this; }

    static RangeIntegerStyle decode(const Decoder& decoder);
    void encode(Encoder& encoder) const;

    friend bool operator==(const RangeIntegerStyle&, const RangeIntegerStyle&) = default;
};

} // namespace CorbelKit

template <>
struct std::hash<CorbelKit::RangeIntegerStyle> {
    std::size_t operator()(const CorbelKit::RangeIntegerStyle& style) const noexcept;
};
