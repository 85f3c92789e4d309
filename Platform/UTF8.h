#pragma once

#include <cstddef>
#include <string_view>

/// UTF-8 as RFC 3629 defines it: shortest forms only, no surrogates, nothing beyond U+10FFFF.
namespace Platform::UTF8 {

/// One character. A plain value.
struct Decoded {
    char32_t scalar;    ///< U+FFFD where the bytes are not well-formed
    std::size_t length; ///< in bytes, at least 1
    bool wellFormed;    ///< false: U+FFFD stands for what was there
};

/// The first character of `bytes`, which must not be empty. What is not well-formed is taken up to
/// the byte that breaks it (Unicode 15, section 3.9, "maximal subparts").
Decoded decodeFirst(std::string_view bytes);

/// Whether all of the bytes are.
bool isWellFormed(std::string_view bytes);

} // namespace Platform::UTF8
