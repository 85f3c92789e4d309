#pragma once

#include "CorbelKit/Coding/Coding.h"

#include <cstddef>
#include <span>
#include <vector>

namespace CorbelKit {

/// Values to JSON (RFC 8259). Callable on any thread.
class JSONEncoder {
public:
    /// A whole JSON text, in UTF-8.
    using Bytes = std::vector<std::byte>;

    /// Fails where the value cannot be in JSON.
    template <class T>
    Platform::Expected<Bytes, CodingError> encode(const T& value) const {
        const auto root = encoded(value, CodingFormat::json);
        if (!root)
            return root.error();
        return write(*root);
    }

private:
    static Platform::Expected<Bytes, CodingError> write(const Platform::PropertyList& root);
};

/// Values from JSON. Callable on any thread.
class JSONDecoder {
public:
    /// Fails where the bytes are no JSON, or hold no such value.
    template <class T>
    Platform::Expected<T, CodingError> decode(std::span<const std::byte> bytes) const {
        const auto root = read(bytes);
        if (!root)
            return root.error();
        return decoded<T>(*root, CodingFormat::json);
    }

private:
    static Platform::Expected<Platform::PropertyList, CodingError>
    read(std::span<const std::byte> bytes);
};

} // namespace CorbelKit
