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
    auto bytes = isContainer ? root.write(outputFormat_) : std::nullopt;
    if (bytes)
        return std::move(*bytes);
    return CodingError{.kind = CodingError::Kind::invalidValue,
                       .codingPath = {},
                       .debugDescription = isContainer
                                               ? "The property-list format cannot hold the value."
                                               : "A property list is a dictionary or a list."};
}

const PropertyListDecoder& PropertyListDecoder::shared() {
    static constexpr PropertyListDecoder decoder;
    return decoder;
}

Platform::Expected<PropertyList, CodingError>
PropertyListDecoder::read(std::span<const std::byte> bytes) {
    if (auto list = PropertyList::read(bytes))
        return std::move(*list);
    return CodingError{.kind = CodingError::Kind::dataCorrupted,
                       .codingPath = {},
                       .debugDescription = "The given data was not a valid property list."};
}

} // namespace CorbelKit
