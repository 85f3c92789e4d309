// Bundles as the system lays them out, which GNUstep does not know: "Bundle Structures" in the
// Bundle Programming Guide.
#import <Foundation/Foundation.h>
#include <dlfcn.h>
#import <objc/runtime.h>

#include <filesystem>

namespace {

BOOL imageNameFromLinker(Class aClass, const char** name) {
    Dl_info information{};
    if (dladdr((__bridge const void*)aClass, &information) == 0)
        return NO;
    *name = information.dli_fname;
    return YES;
}

objc_hook_getImageName imageNameHook = imageNameFromLinker;

NSString* executable() {
    static NSString* const path = @(std::filesystem::read_symlink("/proc/self/exe").c_str());
    return path;
}

} // namespace

// "Install a hook for class_getImageName(). ... On return, the old hook function is stored in the
// variable": <objc/runtime.h>.
void objc_setHook_getImageName(objc_hook_getImageName hook, objc_hook_getImageName* previous) {
    *previous = imageNameHook;
    imageNameHook = hook;
}

const char* class_getImageName(Class aClass) {
    const char* name = nullptr;
    return imageNameHook(aClass, &name) == NO ? nullptr : name;
}

@interface NSBundle (SystemFoundation)
@end

@implementation NSBundle (SystemFoundation)

/// The folder above Contents/MacOS of the running program; the program's own where there is none
/// such.
+ (NSBundle*)mainBundle {
    static NSBundle* const bundle = [] {
        NSString* const folder = executable().stringByDeletingLastPathComponent;
        NSString* const contents = folder.stringByDeletingLastPathComponent;
        const bool isBundle = [contents.lastPathComponent isEqual:@"Contents"];
        return [[NSBundle alloc]
            initWithPath:isBundle ? contents.stringByDeletingLastPathComponent : folder];
    }();
    return bundle;
}

- (NSURL*)bundleURL {
    return [NSURL fileURLWithPath:self.bundlePath isDirectory:YES];
}

- (NSDictionary*)infoDictionary {
    for (NSString* place in
         @[ @"Contents", @"Resources", @"Versions/Current/Resources", @"Support Files", @"" ]) {
        NSString* const path = [[self.bundlePath stringByAppendingPathComponent:place]
            stringByAppendingPathComponent:@"Info.plist"];
        NSData* const data = [NSData dataWithContentsOfFile:path];
        if (data == nil)
            continue;
        id const list = [NSPropertyListSerialization propertyListWithData:data
                                                                  options:0
                                                                   format:nil
                                                                    error:nil];
        return [list isKindOfClass:NSDictionary.class] ? list : @{};
    }
    return @{};
}

/// "the NSBundle object for the framework or loadable bundle that dynamically loaded the class",
/// found by the image that the class comes from, which the hook may name.
+ (NSBundle*)bundleForClass:(Class)aClass {
    const char* const image = class_getImageName(aClass);
    if (image == nullptr || [@(image) isEqual:executable()])
        return NSBundle.mainBundle;
    return [NSBundle bundleWithPath:@(image).stringByDeletingLastPathComponent];
}

@end
