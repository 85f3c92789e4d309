#pragma once

#include "Platform/PropertyList.h"

#import <Foundation/Foundation.h>

#include <optional>

/// Property-list values on their way between this system and Foundation, in their binary form.
namespace Platform {

/// nil for a value that Foundation has no object for.
id foundationObject(const PropertyList& value);

/// Absent for nil, for an object of no property list, and beyond the limits.
std::optional<PropertyList> portableValue(id object, PropertyList::Limits limits = {});

} // namespace Platform
