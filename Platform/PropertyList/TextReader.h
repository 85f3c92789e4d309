#pragma once

#include "Platform/PropertyList/Events.h"

#include <cstddef>
#include <string_view>

namespace Platform::PropertyLists {

/// Reads the old-style form: UTF-8, or UTF-16 with its mark. The dictionary at the root may go
/// without its braces, as in tables of localised texts, where `key;` is short for `key = key;`.
/// A text that holds nothing but comments is no list. False when the bytes are no property list.
bool readText(std::string_view bytes, Receiver& receiver, std::size_t depth);

/// Whether some list begins so: false where no bytes behind these make them one that the receiver
/// takes.
bool mayBeginText(std::string_view bytes, Receiver& receiver, std::size_t depth);

} // namespace Platform::PropertyLists
