#include "Platform/NeverDestroyed.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <algorithm>
#include <string>
#include <string_view>

// Code of a framework that was linked into the program keeps its resources in the framework's own
// bundle, and whoever looks a bundle up by class is to find that one. The runtime is asked for the
// image that a class comes from: for the classes named here, it answers with the framework's.

/// Stands for the kit's resources where they are looked up by class.
@interface CorbelKitResourceBundleClass : NSObject
@end

@implementation CorbelKitResourceBundleClass
@end

namespace {

/// All classes that the kit has in the object runtime. By name: a program may link a part of them.
constexpr std::string_view frameworkClasses[] = {
    "AllowBackgroundItemViewController",
    "AllowBackgroundItemWindowController",
    "CorbelAppearanceObserver",
    "CorbelApplication",
    "CorbelApplicationEvents",
    "CorbelKitResourceBundleClass",
    "CorbelNotificationAnswers",
    "CorbelSettingsObserver",
    "StoryboardViewController",
    "StoryboardWindowController",
    "XPCConnection",
};

/// The path of the framework's executable, found at the first call and kept; empty where it has
/// none.
const std::string& frameworkImage() {
    static const Platform::NeverDestroyed<std::string> image([]() -> std::string {
        @autoreleasepool {
            NSURL* const url = [NSBundle.mainBundle.bundleURL
                URLByAppendingPathComponent:@"Contents/Frameworks/CorbelKit.framework/CorbelKit"
                                isDirectory:NO];
            const char* const path = url.fileSystemRepresentation;
            return path == nullptr ? "" : path;
        }
    }());
    return image.get();
}

objc_hook_getImageName previousHook = nullptr;

BOOL imageNameOf(Class aClass, const char** imageName) noexcept {
    if (std::ranges::count(frameworkClasses, class_getName(aClass)) == 0 ||
        frameworkImage().empty())
        return previousHook(aClass, imageName);
    *imageName = frameworkImage().c_str();
    return YES;
}

/// Runs when the program is loaded.
__attribute__((constructor)) void installImageNameHook() noexcept {
    objc_setHook_getImageName(imageNameOf, &previousHook);
}

} // namespace
