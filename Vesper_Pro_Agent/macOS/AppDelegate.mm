#include "Platform/macOS/Public/SystemEvents.h"

namespace SystemEvents = Platform::SystemEvents;

/// The application's delegate for the system. What it does stands in the portable class of the
/// same name.
@interface AppDelegate : NSObject <NSApplicationDelegate>
@end

@implementation AppDelegate

+ (void)load {
    SystemEvents::chooseApplicationDelegate(self);
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    SystemEvents::applicationDidFinishLaunching();
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    SystemEvents::applicationWillTerminate();
}

- (instancetype)init {
    return [super init];
}

@end
