#include "CorbelKitInterface/macOS/StoryboardControllers.h"

#include "Platform/macOS/Boundary.h"

@implementation StoryboardWindowController

- (void)windowDidLoad {
    [super windowDidLoad];
    self.window.delegate = self;
}

- (void)windowDidResignKey:(NSNotification*)notification {
    Platform::runAtBoundary([self] {
        if (self.resignKeyHandler)
            self.resignKeyHandler();
    });
}

@end

@implementation StoryboardViewController

- (instancetype)initWithCoder:(NSCoder*)coder {
    if ((self = [super initWithCoder:coder]))
        _actions = [NSMutableDictionary dictionary];
    return self;
}

- (void)forward:(SEL)action {
    Platform::runAtBoundary([self, action] {
        if (void (^const task)(void) = self.actions[NSStringFromSelector(action)])
            task();
    });
}

@end
