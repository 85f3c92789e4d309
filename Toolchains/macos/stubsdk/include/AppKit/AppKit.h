// Declarations of what this system uses of the framework, and of nothing else. Compared with the
// public metadata by the declaration checker; a build on a Mac uses the system's own headers.
#pragma once

#include <Foundation/Foundation.h>

#define APPKIT_EXPORT CF_EXPORT

typedef NS_ENUM(NSInteger, NSUserInterfaceLayoutDirection) {
    NSUserInterfaceLayoutDirectionLeftToRight = 0,
    NSUserInterfaceLayoutDirectionRightToLeft = 1
};

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (void)applicationWillTerminate:(NSNotification*)notification;
@end

@interface NSResponder : NSObject
@end

typedef NSString* NSAccessibilityRole;
APPKIT_EXPORT const NSAccessibilityRole NSAccessibilityImageRole;

typedef NSString* NSAppearanceName;
APPKIT_EXPORT const NSAppearanceName NSAppearanceNameAqua;
APPKIT_EXPORT const NSAppearanceName NSAppearanceNameDarkAqua;

@interface NSAppearance : NSObject
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)appearances;
- (void)performAsCurrentDrawingAppearance:(void (^)(void))block
    __attribute__((availability(macos, introduced = 11.0)));
@end

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2
};

@interface NSApplication : NSResponder
@property(readonly, strong) NSAppearance* effectiveAppearance;
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
- (void)run;
@property(weak) id<NSApplicationDelegate> delegate;
@property(readonly) NSUserInterfaceLayoutDirection userInterfaceLayoutDirection;
- (void)terminate:(id)sender;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)flag;
@end

APPKIT_EXPORT __kindof NSApplication* NSApp;
APPKIT_EXPORT int NSApplicationMain(int argc, const char* argv[]);

@interface NSFont : NSObject <NSCopying>
+ (NSFont*)fontWithName:(NSString*)fontName size:(CGFloat)fontSize;
+ (NSFont*)userFixedPitchFontOfSize:(CGFloat)fontSize;
+ (NSFont*)systemFontOfSize:(CGFloat)fontSize;
@property(readonly, copy) NSString* fontName;
@end

@interface NSColorSpace : NSObject
@property(class, readonly, strong) NSColorSpace* deviceRGBColorSpace;
@property(class, readonly, strong) NSColorSpace* genericRGBColorSpace;
@property(class, readonly, strong) NSColorSpace* sRGBColorSpace;
@property(class, readonly, strong) NSColorSpace* deviceGrayColorSpace;
@property(class, readonly, strong) NSColorSpace* genericGrayColorSpace;
@property(class, readonly, strong) NSColorSpace* deviceCMYKColorSpace;
@property(readonly) NSInteger numberOfColorComponents;
@end

@interface NSColor : NSObject <NSCopying>
@property(class, readonly, strong) NSColor* labelColor;
+ (NSColor*)colorWithColorSpace:(NSColorSpace*)space
                     components:(const CGFloat*)components
                          count:(NSInteger)numberOfComponents;
- (NSColor*)colorUsingColorSpace:(NSColorSpace*)space;
- (void)getComponents:(CGFloat*)components;
@end

typedef NSInteger NSModalResponse;

typedef NS_ENUM(NSUInteger, NSAlertStyle) {
    NSAlertStyleWarning = 0,
    NSAlertStyleInformational = 1,
    NSAlertStyleCritical = 2
};

@protocol NSAccessibility <NSObject>
@property(copy) NSAccessibilityRole accessibilityRole;
@property(copy) NSString* accessibilityLabel;
@end

@class NSWindow;

@interface NSView : NSResponder <NSAccessibility>
@property(readonly, assign) NSWindow* window;
@property(readonly) BOOL canBecomeKeyView;
@property(getter=isHidden) BOOL hidden;
@end

@interface NSControl : NSView
@property(copy) NSString* stringValue;
@end

@interface NSTextField : NSControl
@end

@interface NSButton : NSControl
@property(copy) NSString* title;
@end

@interface NSBox : NSView
@end

@interface NSImage : NSObject <NSCopying>
+ (instancetype)imageWithSystemSymbolName:(NSString*)name
                 accessibilityDescription:(NSString*)description
    __attribute__((availability(macos, introduced = 11.0)));
@end

@class NSSymbolEffect, NSSymbolEffectOptions;

@interface NSImageView : NSControl
@property(strong) NSImage* image;
- (void)addSymbolEffect:(NSSymbolEffect*)symbolEffect
                options:(NSSymbolEffectOptions*)options
    __attribute__((availability(macos, introduced = 14.0)));
@end

@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowDidResignKey:(NSNotification*)notification;
@end

@interface NSWindow : NSResponder
@property(weak) id<NSWindowDelegate> delegate;
@property(copy) NSString* title;
@property BOOL preventsApplicationTerminationWhenModal;
- (BOOL)makeFirstResponder:(NSResponder*)responder;
@end

@interface NSViewController : NSResponder
- (instancetype)initWithCoder:(NSCoder*)coder;
@property(strong) NSView* view;
@end

@interface NSWindowController : NSResponder
- (void)showWindow:(id)sender;
- (void)close;
- (void)windowDidLoad;
@property(strong) NSWindow* window;
@property(strong) NSViewController* contentViewController;
@end

@interface NSStoryboard : NSObject
+ (instancetype)storyboardWithName:(NSString*)name bundle:(NSBundle*)storyboardBundleOrNil;
- (id)instantiateInitialController;
@end

@interface NSAlert : NSObject
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
@property NSAlertStyle alertStyle;
@property(readonly, strong) NSWindow* window;
@end

@interface NSRunningApplication : NSObject
@property(class, readonly, strong) NSRunningApplication* currentApplication;
@property(readonly, copy) NSString* localizedName;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSRunningApplication* menuBarOwningApplication;
- (BOOL)openURL:(NSURL*)url;
- (NSImage*)iconForFile:(NSString*)fullPath;
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier;
@end
