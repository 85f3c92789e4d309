#pragma once

#include "Platform/PropertyList/BinaryLayout.h"
#include "Platform/PropertyList/Events.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Platform::PropertyLists {

/// The bytes of one object of the binary form.
std::string binaryScalar(const Scalar& scalar);
std::optional<std::string> binaryData(std::string_view bytes);

/// Absent when the text is not UTF-8.
std::optional<std::string> binaryText(std::string_view text);

/// The first byte of an object that counts its elements, with the count.
void appendBeginning(std::string& bytes, BinaryKind kind, std::size_t count);

void appendBigEndian(std::string& bytes, std::uint64_t number, std::size_t size);

/// 1, 2, 4 or 8: the bytes that hold the number.
std::size_t smallestSize(std::uint64_t number);

/// Dates of the binary form count from the first of January 2001, UTC.
inline constexpr PropertyList::Date binaryEpoch =
    std::chrono::sys_days(std::chrono::year(2001) / std::chrono::January / 1);

} // namespace Platform::PropertyLists
