#pragma once

#include "Platform/Linux/Loops/GObjectPtr.h"
#include "Platform/PropertyList.h"

#include <optional>

/// Property-list values on their way over D-Bus.
namespace Platform {

/// The value must be one that `faultOfCall` finds no fault with.
GVariantPtr busValue(const PropertyList& value);

/// Absent for what has no meaning as a value (a file descriptor, a dictionary with other keys than
/// text), below 32 containers, and beyond the cost that property lists have by default.
std::optional<PropertyList> valueFromBus(GVariant* value);

} // namespace Platform
