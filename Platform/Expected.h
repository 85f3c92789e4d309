#pragma once

#include <string>
#include <utility>
#include <variant>

namespace Platform {

/// Why an operation of the platform failed, in the platform's own words (English, one line). A
/// plain value.
struct Error {
    std::string description; ///< for the log, or for the user as it is
};

/// A value, or the reason why there is none. For one thread at a time, as what it holds.
/// (`std::expected` is wanting in one of the two standard libraries that this code is built with.)
template <class T, class E = Error>
class [[nodiscard]] Expected {
public:
    // All conversions are implicit, so that a function returns either kind by its plain value. By
    // reference, because g++ 12 takes what it inlines of one more value between for uninitialised.

    /// @{
    /// Holds the value, or the reason.
    Expected(T&& value)
        : state_(std::in_place_index<0>, std::move(value)) {}

    Expected(const T& value)
        : state_(std::in_place_index<0>, value) {}

    Expected(E&& error)
        : state_(std::in_place_index<1>, std::move(error)) {}

    Expected(const E& error)
        : state_(std::in_place_index<1>, error) {}

    /// @}

    /// Whether there is a value.
    explicit operator bool() const { return state_.index() == 0; }

    /// @{
    /// The value, which must be there.
    T& operator*() { return std::get<0>(state_); }

    const T& operator*() const { return std::get<0>(state_); }

    T* operator->() { return &std::get<0>(state_); }

    const T* operator->() const { return &std::get<0>(state_); }

    /// @}

    /// The reason; there must be no value.
    const E& error() const { return std::get<1>(state_); }

private:
    std::variant<T, E> state_;
};

} // namespace Platform
