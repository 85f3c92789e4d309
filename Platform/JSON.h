#pragma once

#include "Platform/PropertyList.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// JSON (RFC 8259) in the values of property lists: null, booleans, numbers, texts, lists and
/// dictionaries. One reader and one writer for every system, so that a file means the same on each:
/// that of macOS writes 1.0 as an integer, orders keys as a person would, and reads five encodings
/// and no U+FEFF (NSJSONSerialization reference). Callable on any thread.
namespace Platform::JSON {

/// Absent when the bytes are no JSON in UTF-8, with a byte order mark or without, and beyond the
/// limits that `PropertyList::read` has by itself. A number is an integer where it is written as
/// one that 64 bits hold: 1.0 is none. Of equal keys one counts.
std::optional<PropertyList> read(std::span<const std::byte> bytes);

/// Compact, without a byte order mark, dictionaries in the order of their keys' bytes; what is
/// written is read as the same value, 1.0 as a double. Absent where the value holds data, a date or
/// a UID, a number that is not finite or text that is not UTF-8, or is deeper than can be read.
std::optional<std::vector<std::byte>> write(const PropertyList& value);

} // namespace Platform::JSON
