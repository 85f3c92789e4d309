#include "Platform/Workspace.h"

#include "Platform/Log.h"
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
        NSURL* const target = foundationURL(url);
        if (target != nil && ![NSWorkspace.sharedWorkspace openURL:target])
            log("Cannot open " + url.absoluteString());
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
