#include "Platform/macOS/SettingsObservations.h"

#include "Platform/NeverDestroyed.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/PropertyListObjects.h"
#include "Platform/macOS/SystemEvents.h"
#include "Platform/macOS/Text.h"

#include <utility>

namespace Platform {
namespace {

Class observerClass = Nil;

} // namespace

void SystemEvents::chooseSettingsObserver(Class observer) {
    observerClass = observer;
}

void SystemEvents::settingDidChange() noexcept {
    runAtBoundary([] { Observations::shared().look(); });
}

} // namespace Platform

/// The observer in a program that brings no class of its own.
@interface CorbelSettingsObserver : NSObject
@end

@implementation CorbelSettingsObserver

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    Platform::SystemEvents::settingDidChange();
}

@end

namespace Platform {
namespace {

/// Observes every key of every domain. It has no state and is never released: the system may still
/// be calling it on another thread when an observation has ended.
NSObject* observer() {
    static NSObject* const instance =
        [[(observerClass != Nil ? observerClass : CorbelSettingsObserver.class) alloc] init];
    return instance;
}

} // namespace

std::optional<PropertyList> valueIn(NSUserDefaults* defaults, std::string_view key) {
    @autoreleasepool {
        NSString* const name = foundationText(key);
        return name == nil ? std::nullopt : portableValue([defaults objectForKey:name]);
    }
}

ObservedKey::ObservedKey(NSUserDefaults* defaults, const std::string& keyPath,
                         UserDefaults::Handler handler)
    : defaults_(defaults)
    , key_(foundationText(keyPath))
    , setting_(keyPath, std::move(handler), valueIn(defaults, keyPath)) {
    // A path that leads through a value, or is no text, is refused by an exception.
    @try {
        [defaults_ addObserver:observer()
                    forKeyPath:key_
                       options:NSKeyValueObservingOptionNew
                       context:nullptr];
        isRegistered_ = true;
    } @catch (NSException*) {
    }
}

ObservedKey::~ObservedKey() {
    if (isRegistered_)
        [defaults_ removeObserver:observer() forKeyPath:key_ context:nullptr];
}

void ObservedKey::tell() {
    setting_.tell(valueIn(defaults_, setting_.keyPath()));
}

Observations& Observations::shared() {
    static const NeverDestroyed<Observations> observations;
    return observations.get();
}

void Observations::add(std::shared_ptr<ObservedKey> key) {
    queue_.async([this, key = std::move(key)] {
        keys_.push_back(key);
        key->tell(); // of what came between
    });
}

void Observations::remove(const std::shared_ptr<ObservedKey>& key) {
    queue_.async([this, key] { std::erase(keys_, key); });
}

void Observations::look() {
    queue_.async([this] {
        for (const auto& key : keys_)
            key->tell();
    });
}

} // namespace Platform
