#include "Platform/macOS/Public/SystemEvents.h"

namespace SystemEvents = Platform::SystemEvents;

/// The observer of the settings for the system. What it does stands in the portable class of the
/// same name.
@interface MonitorFolders : NSObject
@end

@implementation MonitorFolders

+ (void)load {
    SystemEvents::chooseSettingsObserver(self);
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    SystemEvents::settingDidChange();
}

- (instancetype)init {
    return [super init];
}

@end
