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

NotificationResponse portableResponse(UNNotificationResponse* response);
NotificationSettings portableSettings(UNNotificationSettings* settings);
std::vector<NotificationCategory> portableCategories(NSSet<UNNotificationCategory*>* categories);

/// Absent for nil.
std::optional<Error> portableError(NSError* error);
Error portableError(NSException* exception);

} // namespace Platform
