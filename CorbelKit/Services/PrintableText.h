#pragma once

#include <string>
#include <string_view>

namespace CorbelKit {

/// Bytes that somebody else chose, as text that is safe to show on one line: what is not UTF-8
/// shows as U+FFFD, and characters that would act on the display instead of showing (controls, line
/// and paragraph separators, overrides of the writing direction) show as escapes: "\n", "\u{202E}".
/// Right-to-left text itself is left alone.
std::string printableText(std::string_view bytes);

} // namespace CorbelKit
