#pragma once

#include "Platform/Expected.h"
#include "Platform/PropertyList.h"

#include <cstddef>
#include <string_view>

namespace Platform {

/// Whether the text is a name of letters, digits and "_" that does not begin with a digit, of at
/// most 255 characters.
bool isMethodName(std::string_view text);

/// How much the arguments hold, in bytes; or why no helper can be called like that. The bounds are
/// such that neither system drops the connection over the message.
Expected<std::size_t> inspectCall(std::string_view method, const PropertyList::Array& arguments);

} // namespace Platform
