#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>

namespace Platform {

/// How the user interface looks: one of the standard appearances, or one that resembles none of
/// them. A plain value.
class Appearance {
public:
    /// The standard appearances.
    enum class Name : std::uint8_t { aqua, darkAqua }; ///< light and dark

    /// Absent: it resembles none of them.
    constexpr explicit Appearance(std::optional<Name> name)
        : name_(name) {}

    /// The one among `names` that resembles this appearance; absent when none does.
    std::optional<Name> bestMatch(std::initializer_list<Name> names) const;

    bool operator==(const Appearance&) const = default;

private:
    std::optional<Name> name_;
};

} // namespace Platform
