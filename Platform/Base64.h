#pragma once

#include "Platform/PropertyList.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

// Base64 of RFC 4648, section 4: the standard alphabet, padded. Callable on any thread.

/// Without line breaks.
std::string base64EncodedString(std::string_view bytes);

/// White space counts nowhere. Absent when the text is no Base64.
std::optional<PropertyList::Data> base64DecodedData(std::string_view text);

/// The same for a text that comes in pieces. For one thread at a time.
class Base64Decoder {
public:
    /// The bytes that the piece completes, until the next call. Absent on a character out of place,
    /// which no further piece mends.
    std::optional<std::string_view> append(std::string_view piece);

    /// Whether the text may end here.
    bool isComplete() const { return digits_ == 0; }

private:
    bool take(char character);

    std::string decoded_;
    std::uint32_t quantum_ = 0;
    unsigned digits_ = 0; // of the quantum, with its padding
    unsigned padding_ = 0;
};

} // namespace Platform
