#include "CorbelKit/Coding/PropertyListCoder.h"

namespace CorbelKit {

using Platform::PropertyList;

const PropertyListEncoder& PropertyListEncoder::binary() {
    static constexpr PropertyListEncoder encoder(PropertyList::Format::binary);
    return encoder;
}

const PropertyListEncoder& PropertyListEncoder::xml() {
    static constexpr PropertyListEncoder encoder(PropertyList::Format::xml);
    return encoder;
}

Platform::Expected<PropertyListEncoder::Bytes, CodingError>
PropertyListEncoder::write(const PropertyList& root) const {
    const bool isContainer = root.get<PropertyList::Dictionary>() != nullptr ||
                             root.get<PropertyList::Array>() != nullptr;
    auto bytes = isContainer ? root.write(outputFormat_)
                             : Platform::Error{"A property list is a dictionary or a list."};
    if (bytes)
        return std::move(*bytes);
    return CodingError{.kind = CodingError::Kind::invalidValue,
                       .codingPath = {},
                       .debugDescription = bytes.error().description};
}

const PropertyListDecoder& PropertyListDecoder::shared() {
    static constexpr PropertyListDecoder decoder(PropertyList::Limits{});
    return decoder;
}

const PropertyListDecoder& PropertyListDecoder::ofOwnFiles() {
    static constexpr PropertyListDecoder decoder(PropertyList::Limits::ofOwnFiles());
    return decoder;
}

Platform::Expected<PropertyList, CodingError>
PropertyListDecoder::read(std::span<const std::byte> bytes) const {
    if (auto list = PropertyList::read(bytes, limits_))
        return std::move(*list);
    return CodingError{.kind = CodingError::Kind::dataCorrupted,
                       .codingPath = {},
                       .debugDescription = "The given data was not a valid property list."};
}

} // namespace CorbelKit
