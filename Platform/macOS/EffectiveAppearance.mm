#include "Platform/Application.h"
#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/ObserverList.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/MainThreadCall.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace Platform {
namespace {

Appearance presentAppearance() {
    @autoreleasepool {
        NSString* const match = [NSApp.effectiveAppearance
            bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
        return Appearance([match isEqualToString:NSAppearanceNameDarkAqua]
                              ? Appearance::Name::darkAqua
                              : Appearance::Name::aqua); // also where nothing is known
    }
}

/// The observers of the application's appearance. Main thread.
class AppearanceObservers {
public:
    static AppearanceObservers& shared() {
        static const NeverDestroyed<AppearanceObservers> observers;
        return observers.get();
    }

    AppearanceObservers();

    Observation add(std::function<void()> handler) { return observers_.add(std::move(handler)); }

    // The system reports more than what makes another appearance, such as higher contrast.
    void look() {
        const Appearance present = presentAppearance();
        if (std::exchange(reported_, present) != present)
            observers_.notify();
    }

private:
    Appearance reported_ = presentAppearance();
    ObserverList observers_;
};

} // namespace
} // namespace Platform

/// Observes the application object. It has no state and is never released.
@interface CorbelAppearanceObserver : NSObject
@end

@implementation CorbelAppearanceObserver

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    Platform::runAtBoundary([] { Platform::AppearanceObservers::shared().look(); });
}

@end

namespace Platform {

AppearanceObservers::AppearanceObservers() {
    static CorbelAppearanceObserver* const observer = [[CorbelAppearanceObserver alloc] init];
    [NSApp addObserver:observer
            forKeyPath:@"effectiveAppearance"
               options:NSKeyValueObservingOptionNew
               context:nullptr];
}

Appearance Application::effectiveAppearance() {
    __block Appearance appearance(std::nullopt);
    callOnMainThread(^{
        appearance = presentAppearance();
    });
    return appearance;
}

Observation Application::observeEffectiveAppearance(std::function<void()> handler) {
    MainThread::check();
    @autoreleasepool {
        return AppearanceObservers::shared().add(std::move(handler));
    }
}

} // namespace Platform
