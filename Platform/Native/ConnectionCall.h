#pragma once

#include "Platform/PropertyList.h"

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// Why no helper can be called like that; absent where one can. The bounds are such that neither
/// system drops the connection over the message.
std::optional<std::string> faultOfCall(std::string_view method,
                                       const PropertyList::Array& arguments);

} // namespace Platform
