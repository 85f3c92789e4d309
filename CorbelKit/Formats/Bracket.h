#pragma once

namespace CorbelKit {

/// One of a pair of brackets whose partner is looked for.
struct Bracket {
    char32_t start;
    char32_t stop;
    bool forward; ///< the partner stands behind it in the text

    friend bool operator==(const Bracket&, const Bracket&) = default;
};

} // namespace CorbelKit
