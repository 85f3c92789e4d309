// The application object and the workspace, as far as the back end uses them. What the user would
// see is a line on standard output; what the user would do comes from `Trial.mm`.
#include "Trial.h"

#import <AppKit/AppKit.h>
#import <ServiceManagement/ServiceManagement.h>

#include <cstdlib>

__kindof NSApplication* NSApp = nil;
const NSAppearanceName NSAppearanceNameAqua = @"NSAppearanceNameAqua";
const NSAppearanceName NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";

@implementation NSResponder
@end

@implementation NSAppearance {
@public
    NSAppearanceName name_;
}

// "Returns the appearance name that most closely matches the current appearance": nil where none
// does.
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray*)names {
    return [names containsObject:name_] ? name_ : nil;
}

- (void)performAsCurrentDrawingAppearance:(void (^)(void))block {
    block();
}

@end

@implementation NSApplication {
    __weak id<NSApplicationDelegate> delegate_;
    NSAppearance* effectiveAppearance_;
}

/// "Returns the application instance, creating it if it doesn't exist yet", of the class that is
/// asked.
+ (NSApplication*)sharedApplication {
    if (NSApp == nil) {
        NSApp = [self alloc];
        NSApp = [NSApp init];
    }
    return NSApp;
}

- (instancetype)init {
    if ((self = [super init]))
        [self useAppearance:NSAppearanceNameAqua];
    return self;
}

- (void)useAppearance:(NSAppearanceName)name {
    [self willChangeValueForKey:@"effectiveAppearance"];
    effectiveAppearance_ = [[NSAppearance alloc] init];
    effectiveAppearance_->name_ = name;
    [self didChangeValueForKey:@"effectiveAppearance"];
}

- (NSAppearance*)effectiveAppearance {
    CorbelTrial::requireMainThread();
    return effectiveAppearance_;
}

- (NSUserInterfaceLayoutDirection)userInterfaceLayoutDirection {
    return std::getenv("CORBEL_RIGHT_TO_LEFT") != nullptr
               ? NSUserInterfaceLayoutDirectionRightToLeft
               : NSUserInterfaceLayoutDirectionLeftToRight;
}

- (id<NSApplicationDelegate>)delegate {
    return delegate_;
}

- (void)setDelegate:(id<NSApplicationDelegate>)delegate {
    delegate_ = delegate;
}

// "Starts the main event loop. ... The loop continues until a stop or terminate message is
// received." The delegate is notified "after the application has been launched and initialized but
// before it has received its first event".
- (void)run {
    CorbelTrial::requireMainThread();
    if ([delegate_ respondsToSelector:@selector(applicationDidFinishLaunching:)])
        [delegate_ applicationDidFinishLaunching:[NSNotification notificationWithName:@"launched"
                                                                               object:self]];
    for (;;) {
        @autoreleasepool {
            [NSRunLoop.mainRunLoop runMode:NSDefaultRunLoopMode beforeDate:NSDate.distantFuture];
        }
    }
}

// "This method is ... notifies ... then calls exit()": "Don't bother to put final cleanup code in
// your app's main() function; it will never be executed."
- (void)terminate:(id)sender {
    CorbelTrial::requireMainThread();
    if ([delegate_ respondsToSelector:@selector(applicationWillTerminate:)])
        [delegate_ applicationWillTerminate:[NSNotification notificationWithName:@"ending"
                                                                          object:self]];
    std::exit(EXIT_SUCCESS);
}

@end

// "Creates the application, loads the main nib file from the application's main bundle, and runs
// the application", as an object of the class that the bundle names as the principal one; without
// one it ends: "No Info.plist file in application bundle or no NSPrincipalClass in the Info.plist
// file, exiting".
int NSApplicationMain(int, const char**) {
    @autoreleasepool {
        NSString* const name = NSBundle.mainBundle.infoDictionary[@"NSPrincipalClass"];
        const Class principal = NSClassFromString(name);
        if (name == nil || principal == nil) {
            CorbelTrial::print(@"No principal class, exiting");
            return EXIT_FAILURE;
        }
        [principal sharedApplication];
    }
    [NSApp run];
    return EXIT_SUCCESS;
}

@implementation NSRunningApplication

- (NSString*)localizedName {
    const char* const name = std::getenv("CORBEL_FRONT_APPLICATION");
    return name == nullptr ? nil : @(name);
}

@end

@implementation NSWorkspace

+ (NSWorkspace*)sharedWorkspace {
    static NSWorkspace* const workspace = [[NSWorkspace alloc] init];
    return workspace;
}

- (NSRunningApplication*)menuBarOwningApplication {
    return [[NSRunningApplication alloc] init];
}

- (BOOL)openURL:(NSURL*)url {
    CorbelTrial::print([@"Opened: " stringByAppendingString:url.absoluteString]);
    return YES;
}

- (NSImage*)iconForFile:(NSString*)path {
    return nil;
}

// "The URL for the app, or nil if no app has the bundle identifier."
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)identifier {
    return [identifier hasPrefix:@"com.tarnwell."]
               ? [NSURL fileURLWithPath:@"/Applications/Vesper Pro.app" isDirectory:YES]
               : nil;
}

@end

@implementation NSControl
@synthesize stringValue, accessibilityRole;
@end

@implementation NSView
@synthesize accessibilityRole;
@end

@implementation NSButton
@synthesize title;
@end

@implementation NSAlert {
    NSMutableArray<NSString*>* buttons_;
}
@synthesize messageText, informativeText, alertStyle;

- (NSButton*)addButtonWithTitle:(NSString*)title {
    if (buttons_ == nil)
        buttons_ = [NSMutableArray array];
    [buttons_ addObject:title];
    return [[NSButton alloc] init];
}

// "If no buttons have been added, an OK button is" shown: NSAlert reference. The user presses it.
- (NSModalResponse)runModal {
    CorbelTrial::requireMainThread();
    CorbelTrial::print(
        [NSString stringWithFormat:@"Alert %ld: %@ | %@ | %@", static_cast<long>(self.alertStyle),
                                   self.messageText, self.informativeText,
                                   buttons_.count == 0 ? @"OK" : buttons_.firstObject]);
    return 1000; // NSAlertFirstButtonReturn
}

@end

@implementation SMAppService

+ (void)openSystemSettingsLoginItems {
    CorbelTrial::print(@"Opened: login items");
}

@end

// Neither fonts nor colours: what has no stand-in is absent.

@implementation NSFont

+ (NSFont*)fontWithName:(NSString*)fontName size:(CGFloat)fontSize {
    return nil;
}

+ (NSFont*)userFixedPitchFontOfSize:(CGFloat)fontSize {
    return nil;
}

+ (NSFont*)systemFontOfSize:(CGFloat)fontSize {
    return nil;
}

- (NSString*)fontName {
    return nil;
}

- (id)copyWithZone:(NSZone*)zone {
    return self;
}

@end

#define SPACE(name)                                                                                \
    +(NSColorSpace*)name {                                                                         \
        return nil;                                                                                \
    }

@implementation NSColorSpace
SPACE(deviceRGBColorSpace)
SPACE(genericRGBColorSpace)
SPACE(sRGBColorSpace)
SPACE(deviceGrayColorSpace)
SPACE(genericGrayColorSpace)
SPACE(deviceCMYKColorSpace)

- (NSInteger)numberOfColorComponents {
    return 0;
}

@end

@implementation NSColor

+ (NSColor*)labelColor {
    return nil;
}

+ (NSColor*)colorWithColorSpace:(NSColorSpace*)space
                     components:(const CGFloat*)components
                          count:(NSInteger)numberOfComponents {
    return nil;
}

- (NSColor*)colorUsingColorSpace:(NSColorSpace*)space {
    return nil;
}

- (void)getComponents:(CGFloat*)components {
}

- (id)copyWithZone:(NSZone*)zone {
    return self;
}

@end
