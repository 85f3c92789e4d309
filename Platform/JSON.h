#pragma once

#include "Platform/PropertyList.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// JSON (RFC 8259) in the values of property lists: null, booleans, numbers, texts, lists and
/// dictionaries. Callable on any thread.
namespace Platform::JSON {

/// Absent when the bytes are no JSON in UTF-8, and beyond the limits that `PropertyList::read` has
/// by itself. A number is an integer where it is written as one that 64 bits hold. Of equal keys
/// one counts.
std::optional<PropertyList> read(std::span<const std::byte> bytes);

/// Compact, dictionaries in the order of their keys. Absent where the value holds data, a date or a
/// UID, a number that is not finite or text that is not UTF-8, or is deeper than can be read.
std::optional<std::vector<std::byte>> write(const PropertyList& value);

} // namespace Platform::JSON
