#pragma once

#include "Platform/Expected.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CorbelKit {

/// One step on the way from the root of a coded value: a key of a dictionary, or a place in a list.
struct CodingKey {
    CodingKey(std::string_view key) // implicit: a text is a key
        : stringValue(key) {}

    CodingKey(const char* key)
        : stringValue(key) {}

    explicit CodingKey(std::size_t index)
        : stringValue("Index " + std::to_string(index))
        , intValue(index) {}

    std::string stringValue;
    std::optional<std::size_t> intValue; ///< from 0 on, in a list

    friend bool operator==(const CodingKey&, const CodingKey&) = default;
};

using CodingPath = std::vector<CodingKey>;

/// Why a value could not be encoded or decoded, and where.
struct CodingError {
    enum class Kind : std::uint8_t {
        typeMismatch,  ///< there is a value of another type
        valueNotFound, ///< there is null, or the list has ended
        keyNotFound,
        dataCorrupted, ///< the bytes are of no such format, or the value cannot be
        invalidValue,  ///< the format has no form for what is to be encoded
    };

    Kind kind = Kind::dataCorrupted;
    CodingPath codingPath;
    std::string debugDescription;

    /// Path and description in one line: `themes[2].comment.alpha: Expected to decode ...`.
    std::string description() const;

    Platform::Error error() const { return {description()}; }
};

} // namespace CorbelKit
