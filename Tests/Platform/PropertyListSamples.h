#pragma once

#include "Platform/PropertyList.h"

#include <random>

namespace PropertyListSamples {

inline std::span<const std::byte> bytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

inline std::string text(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline std::optional<Platform::PropertyList> read(std::string_view content) {
    return Platform::PropertyList::read(bytes(content));
}

std::string repeated(std::string_view unit, std::size_t count);

/// The text in UTF-16 without a mark; ASCII only.
std::string utf16(std::string_view ascii, bool bigEndian);

/// A text of fewer than fifteen characters, as an object of the binary form.
std::string ascii(std::string_view text);

/// A binary list of these objects, the first of which is the root; offsets and references take
/// one byte each.
std::string binary(const std::vector<std::string>& objects);

/// A value of any kind that the format holds, dates in whole seconds, no NaN.
Platform::PropertyList randomValue(std::mt19937& random, Platform::PropertyList::Format format,
                                   int depth = 4);

} // namespace PropertyListSamples
