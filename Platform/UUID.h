#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// A universally unique identifier as RFC 9562 defines it. A plain value.
class UUID {
public:
    /// In the order of the text.
    using Bytes = std::array<std::byte, 16>;

    /// Of any version: the bytes are not looked at.
    explicit UUID(const Bytes& bytes)
        : bytes_(bytes) {}

    /// A new identifier of version 4. The process ends where the system has no random numbers to
    /// give: identifiers that repeat would be worse. Callable on any thread.
    static UUID random() noexcept;

    /// Reads the form that `string` gives, in capitals or not. Absent for anything else.
    static std::optional<UUID> parse(std::string_view text);

    /// 36 characters, hexadecimal digits in capitals: "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6".
    std::string string() const;

    /// In the order of the text.
    const Bytes& bytes() const { return bytes_; }

    friend bool operator==(const UUID&, const UUID&) = default;
    friend std::strong_ordering operator<=>(const UUID&, const UUID&) = default;

private:
    Bytes bytes_;
};

} // namespace Platform

template <>
struct std::hash<Platform::UUID> {
    std::size_t operator()(const Platform::UUID& identifier) const noexcept;
};
