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
/// A plain value.
struct CodingKey {
    /// @{
    /// A key of a dictionary.
    CodingKey(std::string_view key) // implicit: a text is a key
        : stringValue(key) {}

    CodingKey(const char* key)
        : stringValue(key) {}

    /// @}

    /// A place in a list.
    explicit CodingKey(std::size_t index)
        : stringValue("Index " + std::to_string(index))
        , intValue(index) {}

    std::string stringValue;             ///< of a place in a list: "Index 3"
    std::optional<std::size_t> intValue; ///< from 0 on, in a list

    friend bool operator==(const CodingKey&, const CodingKey&) = default;
};

/// The way from the root of a coded value to something in it; empty for the root itself.
using CodingPath = std::vector<CodingKey>;

/// Why a value could not be encoded or decoded, and where. A plain value.
struct CodingError {
    /// What went wrong.
    enum class Kind : std::uint8_t {
        typeMismatch,  ///< there is a value of another type
        valueNotFound, ///< there is null, or the list has ended
        keyNotFound,
        dataCorrupted, ///< the bytes are of no such format, or the value cannot be
        invalidValue,  ///< the format has no form for what is to be encoded
    };

    Kind kind = Kind::dataCorrupted; ///< what went wrong
    CodingPath codingPath;           ///< to the value that failed
    std::string debugDescription;    ///< in English

    /// Path and description in one line: `themes[2].comment.alpha: Expected to decode ...`.
    std::string description() const;

    /// The same for those who show errors of any kind.
    Platform::Error error() const { return {description()}; }
};

} // namespace CorbelKit
