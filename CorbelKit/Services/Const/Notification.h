#pragma once

#include "CorbelKit/Services/Const/Identifier.h"

// clang-format off: a table, one constant a line, in the order in which they are declared

namespace CorbelKit::Const {

/// Buttons of notifications.
namespace NotificationAction {
/// The one action of the notification of a change.
inline constexpr NotificationActionIdentifier show{"ShowAction"};
} // namespace NotificationAction

/// Kinds of notifications, by who posts them.
namespace NotificationCategory::Vesper {
inline constexpr NotificationCategoryIdentifier agent{"VesperAgent"};
inline constexpr NotificationCategoryIdentifier vesper{"Vesper"};
} // namespace NotificationCategory::Vesper

} // namespace CorbelKit::Const

// clang-format on
