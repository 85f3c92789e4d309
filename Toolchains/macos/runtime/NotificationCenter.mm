// The notification centre. What would be shown is a line on standard output. CORBEL_PERMISSION says
// how the user answers the request for permission: granted (unset), refused, failing, late.
#include "Trial.h"

#import <UserNotifications/UserNotifications.h>
#include <dispatch/dispatch.h>

#include <atomic>
#include <cstdlib>
#include <string_view>

namespace {

std::atomic<bool> isAllowedByNow = false;

std::string_view permission() {
    const char* const value = std::getenv("CORBEL_PERMISSION");
    return value == nullptr || isAllowedByNow ? "granted" : value;
}

// UNError.h: "notificationsNotAllowed = 1"
NSError* notAllowed() {
    return [NSError
        errorWithDomain:@"UNErrorDomain"
                   code:1
               userInfo:@{
                   NSLocalizedDescriptionKey : @"Notifications are not allowed for this application"
               }];
}

// "The block may be executed on a background thread": UNUserNotificationCenter reference, of every
// handler.
void later(void (^block)(void)) {
    dispatch_async(dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0), block);
}

void call(void* block) {
    @autoreleasepool {
        ((__bridge_transfer void (^)(void))block)();
    }
}

void after(double seconds, void (^block)(void)) {
    dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, static_cast<int64_t>(seconds * 1e9)),
                     dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0),
                     (__bridge_retained void*)[block copy], call);
}

} // namespace

// Values that nobody changes are their own copies.
#define VALUE                                                                                      \
    -(id)copyWithZone : (NSZone*)zone {                                                            \
        return self;                                                                               \
    }

@implementation UNNotification {
@public
    UNNotificationRequest* request_;
}
VALUE

- (UNNotificationRequest*)request {
    return request_;
}

@end

@implementation UNNotificationResponse {
@public
    UNNotification* notification_;
    NSString* actionIdentifier_;
}
VALUE

- (UNNotification*)notification {
    return notification_;
}

- (NSString*)actionIdentifier {
    return actionIdentifier_;
}

@end

@implementation UNNotificationSettings
VALUE

- (UNAuthorizationStatus)authorizationStatus {
    return permission() == "refused" || permission() == "late" ? UNAuthorizationStatusDenied
                                                               : UNAuthorizationStatusAuthorized;
}

- (UNNotificationSetting)alertSetting {
    return permission() == "refused" ? UNNotificationSettingDisabled : UNNotificationSettingEnabled;
}

@end

@implementation UNUserNotificationCenter {
    void (^question_)(BOOL, NSError*);
    __weak id<UNUserNotificationCenterDelegate> delegate_;
    NSSet<UNNotificationCategory*>* categories_;
    NSMutableDictionary<NSString*, UNNotificationRequest*>* requests_; // pending, then delivered
}

// A process without a bundle identifier: "bundleProxyForCurrentProcess is nil".
+ (UNUserNotificationCenter*)currentNotificationCenter {
    if (NSBundle.mainBundle.infoDictionary[@"CFBundleIdentifier"] == nil)
        [NSException raise:NSInternalInconsistencyException
                    format:@"bundleProxyForCurrentProcess is nil"];
    static UNUserNotificationCenter* const center = [[UNUserNotificationCenter alloc] init];
    return center;
}

- (instancetype)init {
    if ((self = [super init]))
        requests_ = [NSMutableDictionary dictionary];
    return self;
}

- (id<UNUserNotificationCenterDelegate>)delegate {
    return delegate_;
}

- (void)setDelegate:(id<UNUserNotificationCenterDelegate>)delegate {
    delegate_ = delegate;
}

- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL, NSError*))handler {
    if (permission() == "late") { // the user has not looked at the question yet
        question_ = [handler copy];
        return;
    }
    later(^{
        if (permission() == "refused")
            handler(NO, nil); // "granted: false" is no error
        else if (permission() == "failing")
            handler(NO, notAllowed());
        else
            handler(YES, nil);
    });
}

- (void)setNotificationCategories:(NSSet*)categories {
    @synchronized(self) {
        categories_ = [categories copy];
    }
}

// In no order: the first of those that are asked for at once comes last.
- (void)getNotificationSettingsWithCompletionHandler:(void (^)(UNNotificationSettings*))handler {
    static std::atomic<int> waiting = 0;
    after(waiting++ == 0 ? 0.05 : 0, ^{
        --waiting;
        handler([[UNNotificationSettings alloc] init]);
    });
}

// "If the identifier ... is already in use by a scheduled or delivered notification, the system ...
// replaces" it: UNNotificationRequest reference.
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError*))handler {
    if (permission() != "granted") {
        later(^{
            handler(notAllowed());
        });
        return;
    }
    @synchronized(self) {
        requests_[request.identifier] = request;
    }
    later(^{
        handler(nil);
    });
    auto* const trigger = (UNTimeIntervalNotificationTrigger*)request.trigger;
    after(trigger == nil ? 0 : trigger.timeInterval, ^{
        [self deliver:request];
    });
}

- (void)deliver:(UNNotificationRequest*)request {
    @synchronized(self) {
        if (requests_[request.identifier] != request)
            return;
    }
    NSMutableArray* const texts = [NSMutableArray array];
    for (NSString* text in
         @[ request.content.title, request.content.subtitle, request.content.body ])
        if (text.length > 0)
            [texts addObject:text];
    CorbelTrial::print([texts componentsJoinedByString:@" — "]);
}

- (BOOL)offers:(NSString*)action in:(UNNotificationContent*)content {
    if ([action hasPrefix:@"com.apple.UNNotification"])
        return YES;
    for (UNNotificationCategory* category in categories_)
        if ([category.identifier isEqual:content.categoryIdentifier])
            for (UNNotificationAction* offered in category.actions)
                if ([offered.identifier isEqual:action])
                    return YES;
    return NO;
}

- (void)allow {
    isAllowedByNow = true;
    void (^const handler)(BOOL, NSError*) = question_;
    later(^{
        handler(YES, nil);
    });
}

// What the user can press is what the request's category offers, and the notification itself.
- (void)answer:(NSString*)action identifier:(NSString*)identifier {
    UNNotificationResponse* const response = [[UNNotificationResponse alloc] init];
    @synchronized(self) {
        UNNotificationRequest* const request = requests_[identifier];
        if (request == nil || ![self offers:action in:request.content]) {
            CorbelTrial::print(@"There is nothing to press");
            return;
        }
        response->notification_ = [[UNNotification alloc] init];
        response->notification_->request_ = request;
        response->actionIdentifier_ = [action copy];
    }
    // "you must call the completionHandler"; the system waits for it.
    [delegate_ userNotificationCenter:self
        didReceiveNotificationResponse:response
                 withCompletionHandler:^{
                     CorbelTrial::print(@"Answered");
                 }];
}

@end
