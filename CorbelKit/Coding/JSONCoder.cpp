#include "CorbelKit/Coding/JSONCoder.h"

#include "Platform/JSON.h"

namespace CorbelKit {

using Platform::PropertyList;

Platform::Expected<JSONEncoder::Bytes, CodingError> JSONEncoder::write(const PropertyList& root) {
    if (auto bytes = Platform::JSON::write(root))
        return std::move(*bytes);
    return CodingError{.kind = CodingError::Kind::invalidValue,
                       .codingPath = {},
                       .debugDescription = "JSON cannot hold the value."};
}

Platform::Expected<PropertyList, CodingError> JSONDecoder::read(std::span<const std::byte> bytes) {
    if (auto value = Platform::JSON::read(bytes))
        return std::move(*value);
    return CodingError{.kind = CodingError::Kind::dataCorrupted,
                       .codingPath = {},
                       .debugDescription = "The given data was not valid JSON."};
}

} // namespace CorbelKit
