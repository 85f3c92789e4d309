#pragma once

#include "Platform/UserNotificationCenter.h"

#import <UserNotifications/UserNotifications.h>

#include <optional>
#include <vector>

/// Notifications, and what comes back of them, on their way between this system and the platform's.
namespace Platform {

/// Raises an exception for what the platform does not take: an identifier that is not UTF-8, or an
/// interval that is not positive.
UNNotificationRequest* foundationRequest(const NotificationRequest& request);
NSSet<UNNotificationCategory*>*
foundationCategories(const std::vector<NotificationCategory>& categories);

// Called by the system's call-backs, which an exception must not leave.

NotificationResponse portableResponse(UNNotificationResponse* response) noexcept;
NotificationSettings portableSettings(UNNotificationSettings* settings) noexcept;

/// Absent for nil.
std::optional<Error> portableError(NSError* error) noexcept;
Error portableError(NSException* exception) noexcept;

} // namespace Platform
