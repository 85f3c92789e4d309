#include "Platform/macOS/NotificationValues.h"

#include "Platform/macOS/Text.h"

#include <chrono>

namespace Platform {
namespace {

using Seconds = std::chrono::duration<double>;

UNNotificationContent* foundationContent(const NotificationContent& content) {
    UNMutableNotificationContent* const result = [[UNMutableNotificationContent alloc] init];
    result.title = foundationText(content.title);
    result.body = foundationText(content.body);
    result.categoryIdentifier = foundationText(content.categoryIdentifier);
    if (!content.subtitle.empty())
        result.subtitle = foundationText(content.subtitle);
    return result;
}

UNNotificationTrigger* foundationTrigger(const TimeIntervalNotificationTrigger& trigger) {
    return [UNTimeIntervalNotificationTrigger
        triggerWithTimeInterval:Seconds(trigger.timeInterval).count()
                        repeats:NO];
}

UNNotificationCategory* foundationCategory(const NotificationCategory& category) {
    NSMutableArray<UNNotificationAction*>* const actions = [NSMutableArray array];
    for (const auto& action : category.actions)
        [actions
            addObject:[UNNotificationAction actionWithIdentifier:foundationText(action.identifier)
                                                           title:foundationText(action.title)
                                                         options:UNNotificationActionOptions()]];
    NSMutableArray<NSString*>* const intents = [NSMutableArray array];
    for (const auto& intent : category.intentIdentifiers)
        [intents addObject:foundationText(intent)];
    return [UNNotificationCategory categoryWithIdentifier:foundationText(category.identifier)
                                                  actions:actions
                                        intentIdentifiers:intents
                                                  options:UNNotificationCategoryOptions()];
}

std::optional<TimeIntervalNotificationTrigger> portableTrigger(UNNotificationTrigger* trigger) {
    if (![trigger isKindOfClass:UNTimeIntervalNotificationTrigger.class])
        return std::nullopt;
    const Seconds interval(static_cast<UNTimeIntervalNotificationTrigger*>(trigger).timeInterval);
    return TimeIntervalNotificationTrigger{
        .timeInterval = std::chrono::duration_cast<std::chrono::nanoseconds>(interval)};
}

NotificationRequest portableRequest(UNNotificationRequest* request) {
    UNNotificationContent* const content = request.content;
    return {.identifier = portableText(request.identifier),
            .content = {.title = portableText(content.title),
                        .subtitle = portableText(content.subtitle),
                        .body = portableText(content.body),
                        .categoryIdentifier = portableText(content.categoryIdentifier)},
            .trigger = portableTrigger(request.trigger)};
}

AuthorizationStatus portableStatus(UNAuthorizationStatus status) {
    switch (status) {
    case UNAuthorizationStatusDenied:
        return AuthorizationStatus::denied;
    case UNAuthorizationStatusAuthorized:
        return AuthorizationStatus::authorized;
    case UNAuthorizationStatusProvisional:
        return AuthorizationStatus::provisional;
    default:
        return AuthorizationStatus::notDetermined;
    }
}

NotificationSetting portableSetting(UNNotificationSetting setting) {
    switch (setting) {
    case UNNotificationSettingDisabled:
        return NotificationSetting::disabled;
    case UNNotificationSettingEnabled:
        return NotificationSetting::enabled;
    default:
        return NotificationSetting::notSupported;
    }
}

} // namespace

UNNotificationRequest* foundationRequest(const NotificationRequest& request) {
    return [UNNotificationRequest
        requestWithIdentifier:foundationText(request.identifier)
                      content:foundationContent(request.content)
                      trigger:request.trigger ? foundationTrigger(*request.trigger) : nil];
}

NSSet<UNNotificationCategory*>*
foundationCategories(const std::vector<NotificationCategory>& categories) {
    NSMutableArray<UNNotificationCategory*>* const result = [NSMutableArray array];
    for (const auto& category : categories)
        [result addObject:foundationCategory(category)];
    return [NSSet setWithArray:result];
}

NotificationResponse portableResponse(UNNotificationResponse* response) noexcept {
    return {.actionIdentifier = portableText(response.actionIdentifier),
            .request = portableRequest(response.notification.request)};
}

NotificationSettings portableSettings(UNNotificationSettings* settings) noexcept {
    return {.authorizationStatus = portableStatus(settings.authorizationStatus),
            .alertSetting = portableSetting(settings.alertSetting)};
}

std::optional<Error> portableError(NSError* error) noexcept {
    if (error == nil)
        return std::nullopt;
    return Error{lineOf(error)};
}

Error portableError(NSException* exception) noexcept {
    return {portableText(exception.reason)};
}

} // namespace Platform
