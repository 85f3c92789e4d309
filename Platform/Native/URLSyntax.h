#pragma once

#include <string>

namespace Platform {

/// Whether the text, which holds no other bytes than URLs may have, is an absolute URL by the
/// syntax of RFC 3986: `URL` asks the system's own parser. Callable on any thread.
bool isAbsoluteURL(const std::string& text);

} // namespace Platform
