#pragma once

#include "Platform/Linux/Bus/BusMessage.h"
#include "Platform/PropertyList.h"

namespace Platform {

/// Property-list values on their way to a helper, each an argument of its own. They must be ones
/// that `inspectCall` finds no fault with.
BusArguments helperArguments(PropertyList::Array arguments);

} // namespace Platform
