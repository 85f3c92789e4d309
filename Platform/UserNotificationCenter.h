#pragma once

#include "Platform/Expected.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Platform {

/// What the user is asked to allow, as a set.
enum class AuthorizationOptions : unsigned { badge = 1, sound = 2, alert = 4 };

/// What the user has allowed.
enum class AuthorizationStatus { notDetermined, denied, authorized, provisional };

/// Whether a way to notify the user is there, and is wanted.
enum class NotificationSetting { notSupported, disabled, enabled };

/// What the user and the system let through. A plain value.
struct NotificationSettings {
    AuthorizationStatus authorizationStatus = AuthorizationStatus::notDetermined; ///< as a whole

    /// Of texts on the screen.
    NotificationSetting alertSetting = NotificationSetting::notSupported;
};

/// A button of a notification. No options: it neither destroys, nor brings us to the front, nor
/// asks the user to authenticate. A plain value.
struct NotificationAction {
    std::string identifier; ///< comes back as the response's action
    std::string title;      ///< in the user's language
};

/// The buttons that a kind of notification has. A plain value.
struct NotificationCategory {
    std::string identifier;                          ///< which a content names
    std::vector<NotificationAction> actions = {};    ///< in the order shown
    std::vector<std::string> intentIdentifiers = {}; ///< of the system, usually none
};

/// What the user reads, in the user's language: plain text. A plain value.
struct NotificationContent {
    std::string title = {};              ///< the first line
    std::string subtitle = {};           ///< empty: none
    std::string body = {};               ///< what follows it
    std::string categoryIdentifier = {}; ///< empty, or of no category that is set: no buttons
};

/// Delivers once, after a time. A plain value.
struct TimeIntervalNotificationTrigger {
    std::chrono::nanoseconds timeInterval{}; ///< from when it is added
};

/// A notification to be delivered. A plain value.
struct NotificationRequest {
    /// A request replaces an earlier one of the same identifier, whether that one still waits for
    /// its trigger or was delivered. The empty identifier is one like any other.
    std::string identifier;
    NotificationContent content;                            ///< what is shown
    std::optional<TimeIntervalNotificationTrigger> trigger; ///< absent: at once
};

/// What the user did with a notification. A plain value.
struct NotificationResponse {
    /// @{
    /// The identifiers of the system's own answers.
    static constexpr std::string_view defaultActionIdentifier =
        "com.apple.UNNotificationDefaultActionIdentifier";
    static constexpr std::string_view dismissActionIdentifier =
        "com.apple.UNNotificationDismissActionIdentifier";
    /// @}

    std::string actionIdentifier; ///< a button's, or one of the two above
    NotificationRequest request;  ///< which the user answered
};

class UserNotificationCenter;

/// Notified of the user's answers, on the centre's queue.
class UserNotificationCenterDelegate {
public:
    virtual ~UserNotificationCenterDelegate() = default;

    /// `completionHandler` is to be called once, on any thread, when the answer is dealt with.
    virtual void userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
        UserNotificationCenter& center, const NotificationResponse& response,
        std::function<void()> completionHandler) = 0;

protected:
    UserNotificationCenterDelegate() = default;
    UserNotificationCenterDelegate(const UserNotificationCenterDelegate&) = default;
    UserNotificationCenterDelegate& operator=(const UserNotificationCenterDelegate&) = default;
};

/// Delivers notifications to the user. All operations may be called on any thread and return at
/// once; completions run on the centre's own queue.
class UserNotificationCenter {
public:
    /// The process's centre, which lives as long as the process.
    static UserNotificationCenter& current();

    /// Held weakly. Without a delegate, answers are dropped.
    void setDelegate(std::weak_ptr<UserNotificationCenterDelegate> delegate);

    /// Asks the user, the first time and where the system does that; later the completion gets what
    /// was answered then. The error says why nothing could be asked.
    void
    requestAuthorization(AuthorizationOptions options,
                         std::function<void(bool granted, std::optional<Error> error)> completion);

    /// Replaces the categories registered before.
    void setNotificationCategories(std::vector<NotificationCategory> categories);

    /// The completion gets what the user and the system let through at present.
    void getNotificationSettings(std::function<void(NotificationSettings settings)> completion);

    /// The completion reports whether the request was taken, not whether the user saw it. It may
    /// come as late as the trigger fires and whoever shows notifications has answered.
    void add(NotificationRequest request,
             std::function<void(std::optional<Error> error)> completion);

    UserNotificationCenter(const UserNotificationCenter&) = delete;
    UserNotificationCenter& operator=(const UserNotificationCenter&) = delete;
    UserNotificationCenter(UserNotificationCenter&&) = delete;
    UserNotificationCenter& operator=(UserNotificationCenter&&) = delete;
    ~UserNotificationCenter();

private:
    class Impl;
    UserNotificationCenter();

    std::unique_ptr<Impl> impl_;
};

} // namespace Platform
