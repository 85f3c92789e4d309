#pragma once

#include <string>
#include <string_view>

namespace Platform {

/// The bytes as Base64: RFC 4648, section 4, the standard alphabet, padded, without line breaks.
/// Callable on any thread.
std::string base64EncodedString(std::string_view bytes);

} // namespace Platform
