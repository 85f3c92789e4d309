#include "Platform/Workspace.h"

#include "Platform/MainThread.h"
#include "Platform/macOS/FoundationURL.h"
#include "Platform/macOS/Text.h"

#import <AppKit/AppKit.h>

namespace Platform::Workspace {

std::optional<std::string> menuBarOwningApplicationName() {
    MainThread::check();
    @autoreleasepool {
        NSString* const name = NSWorkspace.sharedWorkspace.menuBarOwningApplication.localizedName;
        return name == nil ? std::optional<std::string>() : portableText(name);
    }
}

void open(const URL& url) {
    @autoreleasepool {
        if (NSURL* const target = foundationURL(url))
            [NSWorkspace.sharedWorkspace openURL:target];
    }
}

std::optional<URL> urlForApplication(std::string_view bundleIdentifier) {
    @autoreleasepool {
        NSString* const identifier = foundationText(bundleIdentifier);
        if (identifier == nil)
            return std::nullopt;
        return portableURL(
            [NSWorkspace.sharedWorkspace URLForApplicationWithBundleIdentifier:identifier]);
    }
}

} // namespace Platform::Workspace
