#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Platform {

/// A font as the desktop's settings describe it, in the textual form of Pango: a family, words for
/// its style, a size and further particulars ("Noto Mono Semi-Bold 10").
struct FontDescription {
    std::string family;
    std::vector<std::string> styleWords; ///< "Semi-Bold", "Italic"

    /// Only the machine's fonts show where the family's name ends. The family is empty when none of
    /// the text's beginnings is one.
    static FontDescription parse(std::string_view text,
                                 const std::function<bool(const std::string&)>& isFamily);
};

} // namespace Platform
