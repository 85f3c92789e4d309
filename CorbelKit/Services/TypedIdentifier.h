#pragma once

#include <string_view>

namespace CorbelKit {

/// A text that names a thing of one kind: identifiers of different kinds neither convert into each
/// other nor compare. The text must outlive the identifier, as a literal does.
/// A plain value.
template <class Kind>
class TypedIdentifier {
public:
    /// Keeps no copy of the text.
    constexpr explicit TypedIdentifier(std::string_view rawValue)
        : rawValue_(rawValue) {}

    /// The text itself, for calls that take any.
    constexpr std::string_view rawValue() const { return rawValue_; }

    friend constexpr bool operator==(TypedIdentifier, TypedIdentifier) = default;

private:
    std::string_view rawValue_;
};

} // namespace CorbelKit
