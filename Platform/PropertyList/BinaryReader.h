#pragma once

#include "Platform/PropertyList/Events.h"

#include <cstddef>
#include <string_view>

namespace Platform::PropertyLists {

/// Reads the binary form. Shared references are followed each time that they are met: it is for
/// the receiver to end that by its cost. False when the bytes are no property list.
bool readBinary(std::string_view bytes, Receiver& receiver, std::size_t depth);

} // namespace Platform::PropertyLists
