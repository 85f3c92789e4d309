#include "Platform/Native/NativeAlert.h"

#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/Text.h"

#import <AppKit/AppKit.h>

namespace Platform {
namespace {

NSAlertStyle alertStyle(Alert::Style style) {
    switch (style) {
    case Alert::Style::warning:
        return NSAlertStyleWarning;
    case Alert::Style::informational:
        return NSAlertStyleInformational;
    case Alert::Style::critical:
        return NSAlertStyleCritical;
    }
    return NSAlertStyleWarning;
}

NSString* textOrEmpty(std::string_view text) {
    NSString* const converted = foundationText(text);
    return converted == nil ? @"" : converted;
}

void show(const Alert& alert) {
    NSAlert* const window = [[NSAlert alloc] init];
    window.messageText = textOrEmpty(alert.messageText);
    window.informativeText = textOrEmpty(alert.informativeText);
    window.alertStyle = alertStyle(alert.style);
    if (!alert.buttonTitle.empty())
        [window addButtonWithTitle:textOrEmpty(alert.buttonTitle)];
    [NSApp activateIgnoringOtherApps:YES]; // from the background, it would stay behind the others
    window.window.preventsApplicationTerminationWhenModal = NO; // the end takes it along
    [window runModal];
}

} // namespace

AlertPresenter nativeAlertPresenter() {
    return {.run =
                [](const Alert& alert) {
                    @autoreleasepool {
                        show(alert);
                    }
                    return true;
                },
            .dismissAll = {}};
}

// The main queue is serial: while one of its tasks runs, no loop that the task runs serves it.
// CFRunLoopPerformBlock itself "does not automatically wake up the specified run loop".
void runBesideMainQueue(std::function<void()> task) {
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
        runAtBoundary(task);
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

} // namespace Platform
