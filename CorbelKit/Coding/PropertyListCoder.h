#pragma once

#include "CorbelKit/Coding/Coding.h"

#include <cstddef>
#include <span>
#include <vector>

namespace CorbelKit {

/// Values to property lists. Callable on any thread.
class PropertyListEncoder {
public:
    /// A whole property list.
    using Bytes = std::vector<std::byte>;

    /// @{
    /// The two that the maker's applications share.
    static const PropertyListEncoder& binary();
    static const PropertyListEncoder& xml();

    /// @}

    /// `outputFormat` is one that can be written.
    constexpr explicit PropertyListEncoder(Platform::PropertyList::Format outputFormat)
        : outputFormat_(outputFormat) {}

    /// Fails where the value cannot be in a property list of the format, or not in one that could
    /// be read again; at the root of one there is a dictionary or a list.
    template <class T>
    Platform::Expected<Bytes, CodingError> encode(const T& value) const {
        const auto root = encoded(value, CodingFormat::propertyList);
        if (!root)
            return root.error();
        return write(*root);
    }

private:
    Platform::Expected<Bytes, CodingError> write(const Platform::PropertyList& root) const;

    Platform::PropertyList::Format outputFormat_;
};

/// Values from property lists of any format. Callable on any thread.
class PropertyListDecoder {
public:
    /// @{
    /// The ones that the maker's applications share: for bytes that anybody may have written, and
    /// for what the user's own programs have, which is read again whatever its size.
    static const PropertyListDecoder& shared();
    static const PropertyListDecoder& ofOwnFiles();

    /// @}

    /// Bytes beyond the limits are no property list.
    constexpr explicit PropertyListDecoder(Platform::PropertyList::Limits limits)
        : limits_(limits) {}

    /// Fails where the bytes are no property list, or hold no such value.
    template <class T>
    Platform::Expected<T, CodingError> decode(std::span<const std::byte> bytes) const {
        const auto root = read(bytes);
        if (!root)
            return root.error();
        return decoded<T>(*root, CodingFormat::propertyList);
    }

private:
    Platform::Expected<Platform::PropertyList, CodingError>
    read(std::span<const std::byte> bytes) const;

    Platform::PropertyList::Limits limits_;
};

} // namespace CorbelKit
