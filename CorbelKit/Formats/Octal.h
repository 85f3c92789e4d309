#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Three-digit octal permission values: the mode of a file, and the mask that a job makes its files
/// with. Callable on any thread.
namespace CorbelKit::Octal {

/// What one class of users may do.
struct Attribute {
    bool read = false;    ///< of a folder: list it
    bool write = false;   ///< of a folder: add and remove entries
    bool execute = false; ///< of a folder: reach what is in it

    friend constexpr bool operator==(const Attribute&, const Attribute&) = default;
};

/// The digits of a value, left to right.
struct Mask {
    Attribute user;  ///< the owner
    Attribute group; ///< the owning group's members
    Attribute other; ///< everybody else

    friend constexpr bool operator==(const Mask&, const Mask&) = default;
};

/// What a set bit means: in a mask it withholds the right, in a permission it grants it.
enum class Mode : std::uint8_t { mask, permission };

/// Whose rights a digit holds.
enum class UserClass : std::uint8_t { user, group, other };

/// In English, as the tools of the system write it.
constexpr std::string_view displayName(UserClass userClass) {
    constexpr std::array<std::string_view, 3> names{"user", "group", "other"};
    return names.at(static_cast<std::size_t>(userClass));
}

/// In base 8, with a minus sign where it is negative.
std::string string(std::int64_t integer);

/// A sign, or none, and octal digits; absent for anything else, and beyond 64 bits.
std::optional<std::int64_t> integer(std::string_view octal);

/// The last three characters, with zeros in front where there are fewer.
std::string normalized(std::string_view octal);

/// What the normalised value grants, and the value: "u=rwx,g=r-x,o=r-x 755".
std::string symbolic(std::string_view octal, Mode mode);

/// "rwx", with a hyphen for each right that is not granted. What is no digit counts as 0, so that
/// in a mask it grants everything.
constexpr std::string_view triple(char32_t digit, Mode mode) {
    constexpr std::array<std::string_view, 8> triples{"---", "--x", "-w-", "-wx",
                                                      "r--", "r-x", "rw-", "rwx"};
    const auto bits = digit >= U'0' && digit <= U'7' ? digit - U'0' : 0U;
    return triples.at(mode == Mode::mask ? 7 - bits : bits);
}

/// What a digit of a mask leaves. What is no digit leaves nothing.
constexpr Attribute attribute(char32_t maskDigit) {
    const auto withheld = maskDigit >= U'0' && maskDigit <= U'7' ? maskDigit - U'0' : 7U;
    return {.read = (withheld & 4U) == 0,
            .write = (withheld & 2U) == 0,
            .execute = (withheld & 1U) == 0};
}

/// The digit of a mask that leaves these rights: what `attribute` reads.
constexpr char maskDigit(Attribute attribute) {
    const int granted =
        (attribute.read ? 4 : 0) + (attribute.write ? 2 : 0) + (attribute.execute ? 1 : 0);
    return static_cast<char>('7' - granted);
}

} // namespace CorbelKit::Octal
