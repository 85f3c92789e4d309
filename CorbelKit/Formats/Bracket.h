#pragma once

namespace CorbelKit {

/// One of a pair of brackets whose partner is looked for. A plain value.
struct Bracket {
    char32_t start; ///< what opens the pair
    char32_t stop;  ///< what closes it
    bool forward;   ///< the partner stands behind it in the text

    friend bool operator==(const Bracket&, const Bracket&) = default;
};

} // namespace CorbelKit
