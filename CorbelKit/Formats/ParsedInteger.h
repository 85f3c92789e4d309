#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace CorbelKit {

/// A sign, or none, and digits of the base; absent for anything else, and beyond 64 bits.
inline std::optional<std::int64_t> parsedInteger(std::string_view text, int base) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return std::nullopt;
    }
    std::int64_t value = 0;
    const auto* const begin = text.data();
    const auto* const end = begin + text.size();
    const auto [next, error] = std::from_chars(begin, end, value, base);
    return error == std::errc() && next == end ? std::optional(value) : std::nullopt;
}

} // namespace CorbelKit
