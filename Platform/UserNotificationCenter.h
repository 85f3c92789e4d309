#pragma once

#include "Platform/Expected.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Platform {

enum class AuthorizationOptions : unsigned { badge = 1, sound = 2, alert = 4 };
enum class AuthorizationStatus { notDetermined, denied, authorized, provisional };
enum class NotificationSetting { notSupported, disabled, enabled };

struct NotificationSettings {
    AuthorizationStatus authorizationStatus = AuthorizationStatus::notDetermined;
    NotificationSetting alertSetting = NotificationSetting::notSupported;
};

/// A button of a notification. No options: it neither destroys, nor brings us to the front, nor
/// asks the user to authenticate.
struct NotificationAction {
    std::string identifier;
    std::string title;
};

struct NotificationCategory {
    std::string identifier;
    std::vector<NotificationAction> actions = {};
    std::vector<std::string> intentIdentifiers = {};
};

struct NotificationContent {
    std::string title = {};
    std::string subtitle = {}; ///< empty: none
    std::string body = {};
    std::string categoryIdentifier = {};
};

struct TimeIntervalNotificationTrigger {
    std::chrono::nanoseconds timeInterval{};
};

struct NotificationRequest {
    /// A request replaces an earlier one of the same identifier, whether that one still waits for
    /// its trigger or was delivered. The empty identifier is one like any other.
    std::string identifier;
    NotificationContent content;
    std::optional<TimeIntervalNotificationTrigger> trigger; ///< absent: at once
};

struct NotificationResponse {
    /// The identifiers of the system's own answers.
    static constexpr std::string_view defaultActionIdentifier =
        "com.apple.UNNotificationDefaultActionIdentifier";
    static constexpr std::string_view dismissActionIdentifier =
        "com.apple.UNNotificationDismissActionIdentifier";

    std::string actionIdentifier;
    NotificationRequest request;
};

class UserNotificationCenter;

/// Told of the user's answers, on the centre's queue.
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

    void
    requestAuthorization(AuthorizationOptions options,
                         std::function<void(bool granted, std::optional<Error> error)> completion);

    /// Replaces the categories registered before.
    void setNotificationCategories(std::vector<NotificationCategory> categories);

    void getNotificationCategories(
        std::function<void(std::vector<NotificationCategory> categories)> completion);

    void getNotificationSettings(std::function<void(NotificationSettings settings)> completion);

    /// The completion tells whether the request was taken, not whether the user saw it. It may come
    /// as late as the trigger fires and whoever shows notifications has answered.
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
