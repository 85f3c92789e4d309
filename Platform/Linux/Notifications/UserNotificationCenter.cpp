#include "Platform/UserNotificationCenter.h"

#include "Platform/DispatchQueue.h"
#include "Platform/Linux/Notifications/DesktopNotifications.h"
#include "Platform/Linux/Notifications/NotificationQueue.h"
#include "Platform/Linux/Notifications/ScheduledNotifications.h"
#include "Platform/NeverDestroyed.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <future>
#include <utility>

namespace Platform {
namespace {

using Patience = std::chrono::milliseconds;

std::function<void(Patience)>& deliveryOfScheduled() {
    static const NeverDestroyed<std::function<void(Patience)>> operation;
    return operation.get();
}

// Waits until the task, on the queue, has called the completion that it is given.
bool runAndWait(const DispatchQueue& queue, Patience patience,
                const std::function<void(std::function<void()> completion)>& task) {
    const auto promise = std::make_shared<std::promise<void>>();
    queue.async([task, promise] { task([promise] { promise->set_value(); }); });
    return promise->get_future().wait_for(patience) == std::future_status::ready;
}

} // namespace

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

    void schedule(NotificationRequest request, Completion completion) {
        const auto delay = request.trigger ? request.trigger->timeInterval : std::chrono::seconds();
        const Turn turn{Clock::now() + std::chrono::duration_cast<Clock::duration>(delay),
                        ++lastNumber_};
        const auto earlier = waiting_.add(
            turn, {.request = std::move(request), .completion = std::move(completion)});
        if (earlier)
            earlier->completion(std::nullopt);
        if (isEnding_) {
            deliverUpTo(turn);
        } else {
            queue.asyncAfter(delay, [this, turn] { deliverUpTo(turn); });
        }
    }

    // A request that is on its way here comes through the queue once more: so does this.
    void deliverScheduled(Patience patience) {
        const auto finish = [this](const std::function<void()>& completion) {
            isEnding_ = true;
            deliverUpTo({Clock::time_point::max(), 0});
            queue.async([this, completion] { desktop_.finish(completion); });
        };
        const auto giveUp = [this](const auto& completion) { desktop_.giveUp(completion); };
        if (!runAndWait(queue, patience, finish))
            runAndWait(queue, Patience(100), giveUp);
    }

    const DispatchQueue queue = DispatchQueue::serial("com.tarnwell.UserNotificationCenter");

private:
    using Clock = std::chrono::steady_clock;
    using Turn = std::pair<Clock::time_point, std::uint64_t>; // when it is due, and its number

    struct Waiting {
        NotificationRequest request;
        Completion completion;
    };

    // Of two delays that end together, either may be notified first: whichever is delivers both.
    void deliverUpTo(const Turn& turn) {
        while (!waiting_.isEmpty() && waiting_.begin()->first <= turn) {
            auto next = waiting_.take(waiting_.begin());
            auto actions = actionsOf(next.request.content.categoryIdentifier);
            desktop_.deliver(std::move(next.request), std::move(actions),
                             std::move(next.completion));
        }
    }

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
    NotificationQueue<Turn, Waiting> waiting_;
    std::uint64_t lastNumber_ = 0;
    bool isEnding_ = false;
};

void deliverScheduledNotifications(Patience patience) {
    if (const auto& deliver = deliveryOfScheduled())
        deliver(patience);
}

UserNotificationCenter::UserNotificationCenter()
    : impl_(std::make_unique<Impl>(*this)) {
    deliveryOfScheduled() = [this](Patience patience) { impl_->deliverScheduled(patience); };
}

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
