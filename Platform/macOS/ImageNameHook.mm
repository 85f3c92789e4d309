#include "Platform/NeverDestroyed.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <list>
#include <mutex>
#include <string>

// Code of a framework that was linked into the program keeps its resources in the framework's own
// bundle, and whoever looks a bundle up by class is to find that one. The runtime is asked for the
// image that a class comes from: for the classes named here, it answers with the framework's.

/// Stands for the kit's resources where they are looked up by class.
@interface CorbelKitResourceBundleClass : NSObject
@end

@implementation CorbelKitResourceBundleClass
@end

namespace {

class FrameworkClass {
public:
    FrameworkClass(Class aClass, NSString* framework)
        : class_(aClass)
        , framework_(framework) {}

    bool is(Class aClass) const { return class_ == aClass; }

    /// The path of the framework's executable, found at the first call and kept.
    const char* imageName() {
        std::call_once(isFound_, [this] { imageName_ = find(); });
        return imageName_.c_str();
    }

private:
    std::string find() const {
        @autoreleasepool {
            NSString* const path = [NSString
                stringWithFormat:@"Contents/Frameworks/%@.framework/%@", framework_, framework_];
            NSURL* const image = [NSBundle.mainBundle.bundleURL URLByAppendingPathComponent:path
                                                                                isDirectory:NO];
            return image.fileSystemRepresentation;
        }
    }

    const Class class_;
    NSString* const framework_;
    std::once_flag isFound_;
    std::string imageName_;
};

std::list<FrameworkClass>& frameworkClasses() {
    static const Platform::NeverDestroyed<std::list<FrameworkClass>> classes;
    return classes.get();
}

objc_hook_getImageName previousHook = nullptr;

BOOL imageNameOf(Class aClass, const char** imageName) noexcept {
    for (auto& known : frameworkClasses()) {
        if (known.is(aClass)) {
            *imageName = known.imageName();
            return YES;
        }
    }
    return previousHook(aClass, imageName);
}

/// Runs when the program is loaded; from then on the list is only read.
__attribute__((constructor)) void installImageNameHook() noexcept {
    frameworkClasses().emplace_back(CorbelKitResourceBundleClass.class, @"CorbelKit");
    objc_setHook_getImageName(imageNameOf, &previousHook);
}

} // namespace
