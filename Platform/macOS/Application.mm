#include "Platform/Application.h"

#include "Platform/AlertPresenter.h"
#include "Platform/Bundle.h"
#include "Platform/Log.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/POSIX/ProcessStart.h"
#include "Platform/StandardOutput.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/Public/SystemEvents.h"
#include "Platform/macOS/SoleInstance.h"
#include "Platform/macOS/Text.h"

#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>
#include <sysexits.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <latch>
#include <memory>
#include <vector>

namespace Platform {
namespace {

/// The delegate of the application under way.
std::unique_ptr<ApplicationDelegate>& launchedDelegate() {
    static const NeverDestroyed<std::unique_ptr<ApplicationDelegate>> instance;
    return instance.get();
}

Class<NSApplicationDelegate> delegateClass = Nil;

} // namespace

void SystemEvents::chooseApplicationDelegate(Class<NSApplicationDelegate> delegate) {
    delegateClass = delegate;
}

void SystemEvents::applicationDidFinishLaunching() noexcept {
    runAtBoundary([] { launchedDelegate()->applicationDidFinishLaunching(); });
}

void SystemEvents::applicationWillTerminate() noexcept {
    runAtBoundary([] {
        endAlerts();
        launchedDelegate()->applicationWillTerminate();
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

/// The class of the application object where Info.plist names it as the principal class, or none.
@interface CorbelApplication : NSApplication
@end

@implementation CorbelApplication
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
dispatch_source_t makeEndRequestSource(int request, dispatch_queue_t queue) {
    const dispatch_source_t source = dispatch_source_create(
        DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<uintptr_t>(request), 0, queue);
    dispatch_source_set_event_handler(source, ^{
        endSoon(queue);
        [CorbelApplicationEvents performSelectorOnMainThread:@selector(endApplication)
                                                  withObject:nil
                                               waitUntilDone:NO];
    });
    return source;
}

// The system knows of a source some time after its activation: dispatch_source_create(3). Until
// then a signal just ends the process; one that was ignored so early would be lost.
void terminateOnRequest() {
    static const NeverDestroyed<std::vector<dispatch_source_t>> sources;
    const dispatch_queue_t queue = dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0);
    const auto requests = ProcessStart::endRequests();
    const auto awaited = std::make_shared<std::latch>(std::ssize(requests));
    for (const int request : requests) {
        const dispatch_source_t source = makeEndRequestSource(request, queue);
        dispatch_source_set_registration_handler(source, ^{
            std::signal(request, SIG_IGN); // the source is notified all the same
            awaited->count_down();
        });
        dispatch_activate(source);
        sources.get().push_back(source);
    }
    awaited->wait();
}

constexpr auto patienceWithAnother = std::chrono::seconds(3);

// The system delays the timers of an application that shows nothing (App Nap), unless the
// application says that the user waits for what it does.
void keepTimersOnTime() {
    static const id<NSObject> activity = [NSProcessInfo.processInfo
        beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                          reason:@"Changes are reported as they come"];
    static_cast<void>(activity);
}

/// Of whatever kind the program's own principal class is.
Class applicationClass(const std::string& name) {
    const Class principal = NSClassFromString(foundationText(name));
    if ([principal isSubclassOfClass:NSApplication.class])
        return principal;
    if (!name.empty())
        log("NSPrincipalClass names no class of applications: " + name);
    return CorbelApplication.class;
}

// The system's main function finds the application there, with its delegate.
void makeApplication(Class ofClass,
                     const std::function<std::unique_ptr<ApplicationDelegate>()>& makeDelegate) {
    NSApplication* const application = [ofClass sharedApplication];
    launchedDelegate() = makeDelegate();
    const Class chosen = delegateClass;
    static const id<NSApplicationDelegate> events = // which the application itself does not keep
        [[(chosen != Nil ? chosen : CorbelApplicationEvents.class) alloc] init];
    application.delegate = events;
    keepTimersOnTime();
}

} // namespace

int run(int argumentCount, char** arguments,
        const std::function<std::unique_ptr<ApplicationDelegate>()>& makeDelegate) {
    MainThread::check();
    ProcessStart::ensureStandardStreams();
    ProcessStart::setSignals();
    // Before requests to end are taken over: while it waits, the process just ends at one.
    if (!becomesSoleInstance(Bundle::main().text("CFBundleIdentifier"), patienceWithAnother)) {
        log("Another process of the application is running");
        return EX_TEMPFAIL;
    }
    terminateOnRequest();
    const auto principalClass = Bundle::main().text("NSPrincipalClass");
    const Class used = applicationClass(principalClass);
    runAtBoundary([&] { makeApplication(used, makeDelegate); });
    // For want of Info.plist, a program would have no windows to come to the front.
    if (principalClass.empty())
        [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory];
    // The system's main function ends a program that names no such class.
    if (used != NSClassFromString(foundationText(principalClass))) {
        [NSApp run];
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
