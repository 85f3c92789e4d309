#include "CorbelKit/Services/NotificationPoster.h"

#include "CorbelKit/Services/PrintableText.h"
#include "Platform/StandardOutput.h"
#include "Platform/UserNotificationCenter.h"

#include <utility>

namespace CorbelKit {
namespace {

using Platform::UserNotificationCenter;

// Time for a later notification of the same identifier to take the place of this one.
constexpr auto deliveryDelay = std::chrono::milliseconds(300);

Platform::NotificationRequest makeRequest(const PostedNotification& notification) {
    return {
        .identifier = notification.identifier,
        .content = {.title = printableText(notification.title),
                    .subtitle = printableText(notification.subtitle.value_or("")),
                    .body = printableText(notification.body),
                    .categoryIdentifier = notification.category},
        .trigger = Platform::TimeIntervalNotificationTrigger{.timeInterval = deliveryDelay},
    };
}

} // namespace

void postNotification(const PostedNotification& notification) {
    UserNotificationCenter::current().getNotificationSettings(
        [request = makeRequest(notification)](Platform::NotificationSettings settings) {
            if (settings.authorizationStatus != Platform::AuthorizationStatus::authorized ||
                settings.alertSetting != Platform::NotificationSetting::enabled)
                return;
            UserNotificationCenter::current().add(
                request, [](const std::optional<Platform::Error>& error) {
                    if (error)
                        Platform::StandardOutput::writeLine(error->description);
                });
        });
}

} // namespace CorbelKit
