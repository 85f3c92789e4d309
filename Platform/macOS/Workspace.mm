#include "Platform/Workspace.h"

#include "Platform/MainThread.h"
#include "Platform/macOS/FoundationURL.h"
#include "Platform/macOS/Text.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace Platform::Workspace {

void findMenuBarOwningApplication(std::function<void(std::optional<std::string> name)> completion) {
    MainThread::check();
    @autoreleasepool {
        NSString* const name = NSWorkspace.sharedWorkspace.menuBarOwningApplication.localizedName;
        MainThread::run([completion = std::move(completion),
                         text = name == nil ? std::optional<std::string>() : portableText(name)] {
            completion(text);
        });
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
