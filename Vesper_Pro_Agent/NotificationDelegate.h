#pragma once

#include "Platform/URL.h"
#include "Platform/UserNotificationCenter.h"

#include <optional>
#include <string_view>

namespace Vesper_Pro_Agent {

/// The main application's link to the job file that a notification is about.
std::optional<Platform::URL> jobLink(std::string_view path);

/// Receives the user's answers to notifications: "Show" opens the job in the main application, or
/// the main application alone where the notification names no job. Stateless; any thread.
class NotificationDelegate final : public Platform::UserNotificationCenterDelegate {
public:
    /// Returns at once; the handler is called when the answer was acted on, or could not be.
    void userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
        Platform::UserNotificationCenter& center, const Platform::NotificationResponse& response,
        std::function<void()> completionHandler) override;
};

} // namespace Vesper_Pro_Agent
