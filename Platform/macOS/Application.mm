#include "Platform/Application.h"

#include "Platform/AlertPresenter.h"
#include "Platform/Bundle.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/POSIX/ProcessStart.h"
#include "Platform/StandardOutput.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/Public/SystemEvents.h"

#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <vector>

namespace Platform {
namespace {

/// What the application's objects, which the system makes, have from the caller of `run`.
struct Launch {
    std::function<std::unique_ptr<ApplicationDelegate>()> makeDelegate;
    std::unique_ptr<ApplicationDelegate> delegate; // made with the application
};

Launch& launch() {
    static const NeverDestroyed<Launch> instance;
    return instance.get();
}

Class<NSApplicationDelegate> delegateClass = Nil;

} // namespace

void SystemEvents::chooseApplicationDelegate(Class<NSApplicationDelegate> delegate) {
    delegateClass = delegate;
}

void SystemEvents::applicationDidFinishLaunching() noexcept {
    runAtBoundary([] { launch().delegate->applicationDidFinishLaunching(); });
}

void SystemEvents::applicationWillTerminate() noexcept {
    runAtBoundary([] {
        endAlerts();
        launch().delegate->applicationWillTerminate();
        StandardOutput::drain(std::chrono::milliseconds(150));
    });
}

} // namespace Platform

/// The application's delegate in a program that brings no class of its own.
@interface CorbelApplicationEvents : NSObject <NSApplicationDelegate>
@end

@implementation CorbelApplicationEvents

+ (void)endApplication {
    [NSApp terminate:nil];
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    Platform::SystemEvents::applicationDidFinishLaunching();
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    Platform::SystemEvents::applicationWillTerminate();
}

@end

/// The class of the application object. Info.plist names it as the principal class.
@interface CorbelApplication : NSApplication
@end

@implementation CorbelApplication {
    id<NSApplicationDelegate> events_; // which the application itself does not keep
}

- (instancetype)init {
    if ((self = [super init])) {
        Platform::runAtBoundary([] {
            auto& launch = Platform::launch();
            launch.delegate = launch.makeDelegate();
        });
        const Class chosen = Platform::delegateClass;
        events_ = [[(chosen != Nil ? chosen : CorbelApplicationEvents.class) alloc] init];
        self.delegate = events_;
    }
    return self;
}

@end

namespace Platform::Application {
namespace {

// Whatever holds the main thread, a process that was asked to end does so within the second.
void endSoon(dispatch_queue_t queue) {
    const int64_t lastMoment = 900 * static_cast<int64_t>(NSEC_PER_MSEC);
    dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, lastMoment), queue, nullptr,
                     [](void* /*nothing*/) { _exit(EXIT_SUCCESS); });
}

// Left to itself, the application would end at a signal without notifying the delegate. The main
// queue does not run while an alert is up that one of its tasks shows; the run loop does.
void terminateOnRequest() {
    static const NeverDestroyed<std::vector<dispatch_source_t>> sources;
    const dispatch_queue_t queue = dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0);
    for (const int request : ProcessStart::endRequests()) {
        std::signal(request, SIG_IGN); // the source is notified all the same
        const dispatch_source_t source =
            dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<uintptr_t>(request), 0,
                                   queue);
        dispatch_source_set_event_handler(source, ^{
            endSoon(queue);
            [CorbelApplicationEvents performSelectorOnMainThread:@selector(endApplication)
                                                      withObject:nil
                                                   waitUntilDone:NO];
        });
        dispatch_activate(source);
        sources.get().push_back(source);
    }
}

} // namespace

int run(int argumentCount, char** arguments,
        const std::function<std::unique_ptr<ApplicationDelegate>()>& makeDelegate) {
    MainThread::check();
    ProcessStart::ensureStandardStreams();
    ProcessStart::setSignals();
    terminateOnRequest();
    launch().makeDelegate = makeDelegate;
    // A program outside a bundle has nowhere to name the class, for want of which it would end.
    if (!Bundle::main().infoDictionary().contains("NSPrincipalClass")) {
        NSApplication* const application = CorbelApplication.sharedApplication;
        // For want of Info.plist it would have no windows to come to the front.
        [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
        [application run];
        return EXIT_SUCCESS;
    }
    return NSApplicationMain(argumentCount, const_cast<const char**>(arguments));
}

void announceReady() {
    MainThread::check(); // launchd does not ask
}

LayoutDirection userInterfaceLayoutDirection() {
    static const LayoutDirection direction =
        NSApp.userInterfaceLayoutDirection == NSUserInterfaceLayoutDirectionRightToLeft
            ? LayoutDirection::rightToLeft
            : LayoutDirection::leftToRight;
    return direction;
}

} // namespace Platform::Application
