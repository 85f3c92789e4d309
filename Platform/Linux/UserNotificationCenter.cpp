#include "Platform/UserNotificationCenter.h"

#include "Platform/DispatchQueue.h"
#include "Platform/Linux/DesktopNotifications.h"
#include "Platform/NeverDestroyed.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

namespace Platform {

// All state is touched on the queue alone.
class UserNotificationCenter::Impl {
public:
    using Completion = std::function<void(std::optional<Error> error)>;

    explicit Impl(UserNotificationCenter& center)
        : center_(center) {}

    void setDelegate(std::weak_ptr<UserNotificationCenterDelegate> delegate) {
        delegate_ = std::move(delegate);
    }

    void setCategories(std::vector<NotificationCategory> categories) {
        categories_ = std::move(categories);
    }

    const std::vector<NotificationCategory>& categories() const { return categories_; }

    void schedule(NotificationRequest request, Completion completion) {
        const auto turn = ++lastTurn_;
        waiting_[request.identifier] = turn; // one that still waits is replaced
        const auto delay = request.trigger ? request.trigger->timeInterval : std::chrono::seconds();
        queue.asyncAfter(delay, [this, turn, request = std::move(request),
                                 completion = std::move(completion)] {
            const auto found = waiting_.find(request.identifier);
            if (found == waiting_.end() || found->second != turn) {
                completion(std::nullopt);
                return;
            }
            waiting_.erase(found);
            desktop_.deliver(request, actionsOf(request.content.categoryIdentifier), completion);
        });
    }

    const DispatchQueue queue = DispatchQueue::serial("com.tarnwell.UserNotificationCenter");

private:
    std::vector<NotificationAction> actionsOf(const std::string& category) const {
        const auto found =
            std::ranges::find(categories_, category, &NotificationCategory::identifier);
        return found != categories_.end() ? found->actions : std::vector<NotificationAction>();
    }

    void answer(const NotificationResponse& response) {
        if (const auto delegate = delegate_.lock()) {
            delegate->userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
                center_, response, [] {});
        }
    }

    UserNotificationCenter& center_;
    DesktopNotifications desktop_{
        queue, [this](const NotificationResponse& response) { answer(response); }};
    std::weak_ptr<UserNotificationCenterDelegate> delegate_;
    std::vector<NotificationCategory> categories_;
    std::map<std::string, std::uint64_t, std::less<>> waiting_; // identifier to turn
    std::uint64_t lastTurn_ = 0;
};

UserNotificationCenter::UserNotificationCenter()
    : impl_(std::make_unique<Impl>(*this)) {}

UserNotificationCenter::~UserNotificationCenter() = default;

UserNotificationCenter& UserNotificationCenter::current() {
    struct Current : UserNotificationCenter {};

    static const NeverDestroyed<Current> center;
    return center.get();
}

void UserNotificationCenter::setDelegate(std::weak_ptr<UserNotificationCenterDelegate> delegate) {
    impl_->queue.async([this, delegate = std::move(delegate)] { impl_->setDelegate(delegate); });
}

// The desktop has its own settings, and the service applies them; a terminal asks nobody's leave.
void UserNotificationCenter::requestAuthorization(
    AuthorizationOptions /*options*/,
    std::function<void(bool granted, std::optional<Error> error)> completion) {
    impl_->queue.async([completion = std::move(completion)] { completion(true, std::nullopt); });
}

void UserNotificationCenter::setNotificationCategories(
    std::vector<NotificationCategory> categories) {
    impl_->queue.async(
        [this, categories = std::move(categories)] { impl_->setCategories(categories); });
}

void UserNotificationCenter::getNotificationCategories(
    std::function<void(std::vector<NotificationCategory> categories)> completion) {
    impl_->queue.async(
        [this, completion = std::move(completion)] { completion(impl_->categories()); });
}

void UserNotificationCenter::getNotificationSettings(
    std::function<void(NotificationSettings settings)> completion) {
    impl_->queue.async([completion = std::move(completion)] {
        completion({.authorizationStatus = AuthorizationStatus::authorized,
                    .alertSetting = NotificationSetting::enabled});
    });
}

void UserNotificationCenter::add(NotificationRequest request,
                                 std::function<void(std::optional<Error> error)> completion) {
    impl_->queue.async([this, request = std::move(request), completion = std::move(completion)] {
        impl_->schedule(request, completion);
    });
}

} // namespace Platform
