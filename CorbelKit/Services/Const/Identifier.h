#pragma once

#include "CorbelKit/Services/TypedIdentifier.h"

// clang-format off: a table, one constant a line, in the order in which they are declared

namespace CorbelKit::Const {

// Names of things that the system distinguishes by their type as well.

/// @{
/// Names one thing of the kind that the type is called after.
using NotificationActionIdentifier = TypedIdentifier<struct NotificationActionKind>;
using NotificationCategoryIdentifier = TypedIdentifier<struct NotificationCategoryKind>;
using WindowIdentifier = TypedIdentifier<struct WindowKind>;
using TouchBarDomain = TypedIdentifier<struct TouchBarDomainKind>;
using TouchBarIdentifier = TypedIdentifier<struct TouchBarKind>;
using TouchBarItemIdentifier = TypedIdentifier<struct TouchBarItemKind>;
using StoryboardSegueIdentifier = TypedIdentifier<struct StoryboardSegueKind>;
using UserInterfaceItemIdentifier = TypedIdentifier<struct UserInterfaceItemKind>;
/// @}

} // namespace CorbelKit::Const

// clang-format on
