#pragma once

#include "Platform/PropertyList/Events.h"

namespace Platform::PropertyLists {

/// Hands a value to a receiver as a reader would. False when the receiver wants no more, or where
/// containers lie deeper than a reader takes them.
bool walk(const PropertyList& list, Receiver& receiver);

} // namespace Platform::PropertyLists
