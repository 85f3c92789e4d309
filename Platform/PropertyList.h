#pragma once

#include "Platform/Expected.h"

#include <chrono>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace Platform {

/// A property-list value, and its serialised forms. A plain value; callable on any thread.
///
/// Readers take bytes that an attacker may have written: they never recurse on the input, and what
/// they build is bounded by `Limits`. Writers write nothing that readers refuse. Text is UTF-8.
class PropertyList {
public:
    /// No value. The binary form and JSON have one.
    struct Null {
        friend bool operator==(Null, Null) = default;
    };

    /// An object identifier of a keyed archive (binary form only).
    struct UID {
        std::uint64_t value = 0; ///< a place in the archive's list of objects
        friend bool operator==(UID, UID) = default;
    };

    /// @{
    /// The containers, and bytes that mean nothing here.
    using Array = std::vector<PropertyList>;
    using Dictionary = std::map<std::string, PropertyList, std::less<>>;
    using Data = std::vector<std::byte>;
    /// @}

    /// Seconds since the Unix epoch, UTC.
    using Date = std::chrono::sys_time<std::chrono::duration<double>>;
    /// Integers are signed where they fit; `std::uint64_t` holds only values from 2^63 on.
    using Value = std::variant<Null, bool, std::int64_t, std::uint64_t, double, Date, Data,
                               std::string, UID, Array, Dictionary>;

    /// The serialised forms.
    enum class Format : std::uint8_t {
        xml,
        binary, ///< "bplist00"
        text,   ///< the old-style form; read only
    };

    /// What a reader accepts: beyond it the bytes count as no property list. These are for bytes
    /// that anybody may have written.
    struct Limits {
        /// Containers within containers.
        std::size_t depth = 512;
        /// Bytes of the values built, each value counted with its size in memory. Shared
        /// references of the binary form count each time they are met.
        std::size_t cost = std::size_t{64} << 20U;

        /// For what the user's own programs keep, their settings and their data: twice what
        /// `write` makes, for a value may take more memory here than where it was written.
        static constexpr Limits ofOwnFiles() { return {.cost = 2 * ofWriting().cost}; }

        /// For `write`.
        static constexpr Limits ofWriting() { return {.cost = std::size_t{2} << 30U}; }
    };

    /// The most bytes that `write` makes, and that a file of the user's own is read with.
    static constexpr std::size_t largestOwnFile = std::size_t{4} << 30U;

    PropertyList() = default;

    /// Of any of the kinds that `Value` has.
    template <class T>
        requires(!std::same_as<std::remove_cvref_t<T>, PropertyList> &&
                 std::constructible_from<Value, T>)
    PropertyList(T&& value) // implicit: a value stands for itself
        : value_(std::forward<T>(value)) {}

    /// @{
    /// What is held: null, unless it was made of something else.
    const Value& value() const { return value_; }

    Value& value() { return value_; }

    /// @}

    /// The value when it is of the kind asked for; null otherwise.
    template <class T>
    const T* get() const {
        return std::get_if<T>(&value_);
    }

    /// The value under `key` when this is a dictionary that holds it; null otherwise.
    const PropertyList* find(std::string_view key) const;

    friend bool operator==(const PropertyList&, const PropertyList&) = default;

    /// @{
    /// Reads any of the three forms, recognised by their content. Absent when the bytes are no
    /// property list. Of equal keys the last one counts.
    /// - XML: UTF-8, UTF-16, ISO-8859-1 or US-ASCII, with or without a byte-order mark; the `plist`
    ///   element may be missing. Whatever declares an entity or an attribute is no property list.
    /// - Binary: sets are read as arrays, and half a surrogate pair as U+FFFD.
    /// - Old-style text: UTF-8, or UTF-16 with its mark; a dictionary without its braces, as in
    ///   tables of localised texts; a lone string. Octal escapes are NeXTSTEP's.
    static std::optional<PropertyList> read(std::span<const std::byte> bytes);
    static std::optional<PropertyList> read(std::span<const std::byte> bytes, Limits limits);
    /// @}

    /// What can be read again: gives the reason where the value is larger or deeper than the
    /// limits, and where the form cannot hold it, as null and UID in XML, anything in `text`, text
    /// that is not UTF-8 or that XML has no character for, in XML a date beyond the years 0 to 9999
    /// (fractions of a second are dropped).
    Expected<std::vector<std::byte>> write(Format format,
                                           Limits limits = Limits::ofWriting()) const;

private:
    Value value_;
};

} // namespace Platform
