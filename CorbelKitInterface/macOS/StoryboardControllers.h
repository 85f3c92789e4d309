#pragma once

#import <AppKit/AppKit.h>

/// What the window controllers of the kit's storyboards have in common: they are the delegates of
/// their windows, and forward to the portable controllers.
@interface StoryboardWindowController : NSWindowController <NSWindowDelegate>
@property(copy) void (^resignKeyHandler)(void);
@end

/// The same for view controllers: they have the outlets, and forward actions by their selectors.
@interface StoryboardViewController : NSViewController
@property(readonly) NSMutableDictionary<NSString*, void (^)(void)>* actions;
- (void)forward:(SEL)action;
@end
