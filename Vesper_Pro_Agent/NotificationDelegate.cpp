#include "Vesper_Pro_Agent/NotificationDelegate.h"

namespace Vesper_Pro_Agent {

void NotificationDelegate::
    userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
        Platform::UserNotificationCenter& /*center*/,
        const Platform::NotificationResponse& /*response*/,
        std::function<void()> completionHandler) {
    completionHandler();
}

} // namespace Vesper_Pro_Agent
