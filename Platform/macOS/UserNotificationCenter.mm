#include "Platform/UserNotificationCenter.h"

#include "Platform/DispatchQueue.h"
#include "Platform/Mutex.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/macOS/NotificationValues.h"
#include "Platform/macOS/Public/SystemEvents.h"
#include "Platform/macOS/Text.h"

#include <utility>

namespace Platform {
namespace {

/// The centre's own queue, on which completions and the delegate are called.
const DispatchQueue& queue() {
    static const NeverDestroyed<DispatchQueue> instance(
        DispatchQueue::serial("com.tarnwell.UserNotificationCenter"));
    return instance.get();
}

/// Whom the answers go to.
class Receiver {
public:
    static Receiver& shared() {
        static const NeverDestroyed<Receiver> instance;
        return instance.get();
    }

    void set(std::weak_ptr<UserNotificationCenterDelegate> delegate) {
        const MutexLock lock(mutex_);
        delegate_ = std::move(delegate);
    }

    std::shared_ptr<UserNotificationCenterDelegate> get() {
        const MutexLock lock(mutex_);
        return delegate_.lock();
    }

private:
    Mutex mutex_;
    std::weak_ptr<UserNotificationCenterDelegate> delegate_ CORBEL_GUARDED_BY(mutex_);
};

Class<UNUserNotificationCenterDelegate> delegateClass = Nil;

} // namespace

void SystemEvents::chooseNotificationDelegate(Class<UNUserNotificationCenterDelegate> delegate) {
    delegateClass = delegate;
}

void SystemEvents::didReceiveNotificationResponse(UNNotificationResponse* response,
                                                  void (^completionHandler)(void)) noexcept {
    void (^const complete)(void) = [completionHandler copy];
    queue().async([answer = portableResponse(response), complete] {
        if (const auto delegate = Receiver::shared().get()) {
            delegate->userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
                UserNotificationCenter::current(), answer, [complete] { complete(); });
        } else {
            complete();
        }
    });
}

} // namespace Platform

/// The centre's delegate in a program that brings no class of its own.
@interface CorbelNotificationAnswers : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation CorbelNotificationAnswers

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler {
    Platform::SystemEvents::didReceiveNotificationResponse(response, completionHandler);
}

@end

namespace Platform {
namespace {

id<UNUserNotificationCenterDelegate> makeDelegate() {
    const Class chosen = delegateClass;
    return [[(chosen != Nil ? chosen : CorbelNotificationAnswers.class) alloc] init];
}

template <class... Arguments>
void post(const std::function<void(Arguments...)>& completion,
          std::type_identity_t<std::decay_t<Arguments>>... arguments) noexcept {
    queue().async([completion, ... arguments = std::move(arguments)] { completion(arguments...); });
}

} // namespace

class UserNotificationCenter::Impl {
public:
    Impl() {
        // A process without a bundle, of which the user could not be asked, is refused a centre.
        @try {
            center_ = [UNUserNotificationCenter currentNotificationCenter];
        } @catch (NSException* exception) {
            refusal_ = portableError(exception);
        }
        center_.delegate = answers_;
    }

    /// nil where there is a refusal.
    UNUserNotificationCenter* center() const { return center_; }

    const std::optional<Error>& refusal() const { return refusal_; }

private:
    const id<UNUserNotificationCenterDelegate> answers_ = makeDelegate(); // the centre keeps none
    UNUserNotificationCenter* center_ = nil;
    std::optional<Error> refusal_;
};

UserNotificationCenter::UserNotificationCenter()
    : impl_(std::make_unique<Impl>()) {}

UserNotificationCenter::~UserNotificationCenter() = default;

UserNotificationCenter& UserNotificationCenter::current() {
    struct Current : UserNotificationCenter {};

    static const NeverDestroyed<Current> center;
    return center.get();
}

void UserNotificationCenter::setDelegate(std::weak_ptr<UserNotificationCenterDelegate> delegate) {
    Receiver::shared().set(std::move(delegate));
}

void UserNotificationCenter::requestAuthorization(
    AuthorizationOptions options,
    std::function<void(bool granted, std::optional<Error> error)> completion) {
    if (impl_->refusal()) {
        post(completion, false, impl_->refusal());
        return;
    }
    static_assert(static_cast<UNAuthorizationOptions>(AuthorizationOptions::alert) ==
                  UNAuthorizationOptionAlert);
    [impl_->center() requestAuthorizationWithOptions:static_cast<UNAuthorizationOptions>(options)
                                   completionHandler:^(BOOL granted, NSError* error) {
                                       post(completion, granted == YES, portableError(error));
                                   }];
}

void UserNotificationCenter::setNotificationCategories(
    std::vector<NotificationCategory> categories) {
    @autoreleasepool {
        @try {
            [impl_->center() setNotificationCategories:foundationCategories(categories)];
        } @catch (NSException*) { // the system refuses
        }
    }
}

void UserNotificationCenter::getNotificationSettings(
    std::function<void(NotificationSettings settings)> completion) {
    if (impl_->refusal()) {
        post(completion, {});
        return;
    }
    [impl_->center()
        getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings* settings) {
            post(completion, portableSettings(settings));
        }];
}

void UserNotificationCenter::add(NotificationRequest request,
                                 std::function<void(std::optional<Error> error)> completion) {
    if (impl_->refusal()) {
        post(completion, impl_->refusal());
        return;
    }
    @autoreleasepool {
        @try {
            [impl_->center() addNotificationRequest:foundationRequest(request)
                              withCompletionHandler:^(NSError* error) {
                                  post(completion, portableError(error));
                              }];
        } @catch (NSException* exception) {
            post(completion, std::optional(portableError(exception)));
        }
    }
}

} // namespace Platform
