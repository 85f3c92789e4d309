#pragma once

#include "Platform/UserNotificationCenter.h"

namespace Vesper_Pro_Agent {

/// Receives the user's answers to notifications. Stateless; any thread.
class NotificationDelegate final : public Platform::UserNotificationCenterDelegate {
public:
    /// Acknowledges the answer. (Notifications on a terminal have no buttons, so none is acted on
    /// as long as only the terminal delivers.)
    void userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
        Platform::UserNotificationCenter& center, const Platform::NotificationResponse& response,
        std::function<void()> completionHandler) override;
};

} // namespace Vesper_Pro_Agent
