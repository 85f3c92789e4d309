#pragma once

#include "Platform/PropertyList.h"

#include <string>

namespace Defaults {

/// The value as the user is shown it: a text as it is, a number by its shortest decimal form, a
/// switch as 1 or 0; all else in the old-style text form of property lists, of several lines, where
/// what is no plain word is quoted and escaped.
std::string valueText(const Platform::PropertyList& value);

} // namespace Defaults
