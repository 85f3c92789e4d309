#include "CorbelKit/Services/NotificationPoster.h"

#include "CorbelKit/Services/PrintableText.h"
#include "Platform/Mutex.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/StandardOutput.h"
#include "Platform/UserNotificationCenter.h"

#include <deque>
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

/// Requests that wait for the centre to say what the user lets through.
class WaitingRequests {
public:
    static WaitingRequests& shared() {
        static const Platform::NeverDestroyed<WaitingRequests> instance;
        return instance.get();
    }

    void add(Platform::NotificationRequest request) CORBEL_EXCLUDES(mutex_) {
        const Platform::MutexLock lock(mutex_);
        requests_.push_back(std::move(request));
    }

    /// One of them, the first that was added. There is one for each answer.
    Platform::NotificationRequest take() CORBEL_EXCLUDES(mutex_) {
        const Platform::MutexLock lock(mutex_);
        auto first = std::move(requests_.front());
        requests_.pop_front();
        return first;
    }

private:
    Platform::Mutex mutex_;
    std::deque<Platform::NotificationRequest> requests_ CORBEL_GUARDED_BY(mutex_);
};

} // namespace

// Some systems answer in any order. A later notification is to take the place of an earlier one,
// not the other way round, so that each answer lets the one pass that has waited longest.
void postNotification(const PostedNotification& notification) {
    WaitingRequests::shared().add(makeRequest(notification));
    UserNotificationCenter::current().getNotificationSettings(
        [](Platform::NotificationSettings settings) {
            auto request = WaitingRequests::shared().take();
            if (settings.authorizationStatus != Platform::AuthorizationStatus::authorized ||
                settings.alertSetting != Platform::NotificationSetting::enabled)
                return;
            UserNotificationCenter::current().add(
                std::move(request), [](const std::optional<Platform::Error>& error) {
                    if (error)
                        Platform::StandardOutput::writeLine(error->description);
                });
        });
}

} // namespace CorbelKit
