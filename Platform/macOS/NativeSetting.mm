#include "Platform/macOS/NativeSetting.h"

#include "Platform/Native/ObservedSettings.h"
#include "Platform/macOS/Boundary.h"
#include "Platform/macOS/PropertyListObjects.h"
#include "Platform/macOS/Public/SystemEvents.h"
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
    runAtBoundary([] { ObservedSettings::shared().compare(); });
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

// "Retrieves only the keys and values from the specified domain": `persistentDomainForName:`.
std::optional<PropertyList> SettingsDomain::value(std::string_view key) const {
    @autoreleasepool {
        NSString* const text = foundationText(key);
        if (text == nil)
            return std::nullopt;
        id value = [defaults persistentDomainForName:name][text];
        if (value == nil)
            value = [defaults volatileDomainForName:NSRegistrationDomain][text];
        return portableValue(value, PropertyList::Limits::ofOwnFiles());
    }
}

NativeSetting::Impl::Impl(SettingsDomain domain, std::string keyPath)
    : domain_(domain)
    , keyPath_(std::move(keyPath))
    , key_(foundationText(keyPath_)) {
    // A path that leads through a value, or is no text, is refused by an exception.
    @try {
        [domain_.defaults addObserver:observer()
                           forKeyPath:key_
                              options:NSKeyValueObservingOptionNew
                              context:nullptr];
        isRegistered_ = true;
    } @catch (NSException*) {
    }
}

NativeSetting::Impl::~Impl() {
    if (isRegistered_)
        [domain_.defaults removeObserver:observer() forKeyPath:key_ context:nullptr];
}

NativeSetting::NativeSetting(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

NativeSetting::~NativeSetting() = default;

std::vector<std::optional<PropertyList>>
NativeSetting::values(const std::vector<const NativeSetting*>& settings) {
    std::vector<std::optional<PropertyList>> values;
    for (const auto* setting : settings)
        values.push_back(setting->impl_->value());
    return values;
}

} // namespace Platform
