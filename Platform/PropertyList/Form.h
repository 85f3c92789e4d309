#pragma once

#include "Platform/PropertyList.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace Platform::PropertyLists {

/// How a property list is written, and the place where its reader is to begin.
struct Form {
    PropertyList::Format format;
    std::size_t begin;
};

/// Recognised by the first bytes; absent as long as there are too few. White space may stand before
/// XML, even before its declaration, but beyond `formWindow` bytes of it the list counts as text.
std::optional<Form> formOf(std::string_view firstBytes, bool complete);

inline constexpr std::size_t formWindow = 4096;

} // namespace Platform::PropertyLists
