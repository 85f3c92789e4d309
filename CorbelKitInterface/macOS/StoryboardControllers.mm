#include "CorbelKitInterface/macOS/StoryboardControllers.h"

namespace {

// At the bottom of a call by the system: what the task leaves to the autorelease pool is released
// at once, and an exception ends the process here rather than unwind the system.
void perform(void (^task)(void)) noexcept {
    @autoreleasepool {
        if (task)
            task();
    }
}

} // namespace

@implementation StoryboardWindowController

- (void)windowDidLoad {
    [super windowDidLoad];
    self.window.delegate = self;
}

- (void)windowDidResignKey:(NSNotification*)notification {
    perform(self.resignKeyHandler);
}

@end

@implementation StoryboardViewController

- (instancetype)initWithCoder:(NSCoder*)coder {
    if ((self = [super initWithCoder:coder]))
        _actions = [NSMutableDictionary dictionary];
    return self;
}

- (void)forward:(SEL)action {
    perform(self.actions[NSStringFromSelector(action)]);
}

@end
