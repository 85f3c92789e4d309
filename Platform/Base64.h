#pragma once

#include "Platform/PropertyList.h"

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

// Base64 of RFC 4648, section 4: the standard alphabet, padded. Callable on any thread.

/// Without line breaks.
std::string base64EncodedString(std::string_view bytes);

/// White space counts nowhere. Absent when the text is no Base64.
std::optional<PropertyList::Data> base64DecodedData(std::string_view text);

} // namespace Platform
