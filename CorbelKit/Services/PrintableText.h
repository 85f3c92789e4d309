#pragma once

#include "Platform/PrintableText.h"

#include <string>
#include <string_view>

namespace CorbelKit {

/// Bytes that somebody else chose, as text that is safe to show on one line, with escapes for what
/// would act on the display. Callable on any thread.
inline std::string printableText(std::string_view bytes) {
    return Platform::printableText(bytes, Platform::ActingCharacters::escaped);
}

} // namespace CorbelKit
