#include "Platform/macOS/Public/SystemEvents.h"

namespace SystemEvents = Platform::SystemEvents;

/// The delegate of the notification centre for the system. What it does stands in the portable
/// class of the same name.
@interface NotificationDelegate : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation NotificationDelegate

+ (void)load {
    SystemEvents::chooseNotificationDelegate(self);
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler {
    SystemEvents::didReceiveNotificationResponse(response, completionHandler);
}

- (instancetype)init {
    return [super init];
}

@end
