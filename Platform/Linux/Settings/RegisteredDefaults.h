#pragma once

#include "Platform/PropertyList.h"

#include <optional>
#include <string_view>

/// The defaults of this process, which count in every domain that has no value. Any thread.
namespace Platform::RegisteredDefaults {

void add(const PropertyList::Dictionary& defaults);

/// The value among those of a domain, or else the registered one.
std::optional<PropertyList> lookUp(const PropertyList::Dictionary& values, std::string_view key);

} // namespace Platform::RegisteredDefaults
