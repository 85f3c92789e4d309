#include "Platform/UserDefaults.h"

#include "Platform/Bundle.h"
#include "Platform/Native/ObservedSettings.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/POSIX/FileSystemPath.h"
#include "Platform/macOS/NativeSetting.h"
#include "Platform/macOS/PropertyListObjects.h"
#include "Platform/macOS/Text.h"

#include <utility>

namespace Platform {

class UserDefaults::Impl {
public:
    explicit Impl(SettingsDomain ofDomain)
        : domain(ofDomain) {}

    const SettingsDomain domain;
};

namespace {

NSString* standardDomain() {
    const auto identifier = Bundle::main().text("CFBundleIdentifier");
    return identifier.empty() ? NSProcessInfo.processInfo.processName : foundationText(identifier);
}

} // namespace

UserDefaults::UserDefaults(std::shared_ptr<const Impl> impl)
    : impl_(std::move(impl)) {}

UserDefaults& UserDefaults::standard() {
    static const NeverDestroyed<UserDefaults> defaults(
        UserDefaults(std::make_shared<Impl>(SettingsDomain{
            .defaults = NSUserDefaults.standardUserDefaults, .name = standardDomain()})));
    return defaults.get();
}

std::optional<UserDefaults> UserDefaults::suite(std::string_view suiteName) {
    @autoreleasepool {
        NSString* const name = canNameFile(suiteName, ".plist") ? foundationText(suiteName) : nil;
        if (name != nil && suiteName == Bundle::main().text("CFBundleIdentifier"))
            return standard();
        NSUserDefaults* const defaults =
            name == nil ? nil : [[NSUserDefaults alloc] initWithSuiteName:name];
        if (defaults == nil)
            return std::nullopt;
        return UserDefaults(
            std::make_shared<Impl>(SettingsDomain{.defaults = defaults, .name = name}));
    }
}

std::optional<PropertyList> UserDefaults::object(std::string_view key) const {
    return impl_->domain.value(key);
}

std::optional<Error> UserDefaults::set(std::string_view key, PropertyList value) {
    @autoreleasepool {
        NSString* const name = foundationText(key);
        const id object = foundationObject(value);
        if (name == nil || object == nil)
            return Error{"settings cannot hold the value"};
        @try {
            [impl_->domain.defaults setObject:object forKey:name];
        } @catch (NSException* refusal) {
            return Error{portableText(refusal.reason)};
        }
        return std::nullopt;
    }
}

std::optional<Error> UserDefaults::remove(std::string_view key) {
    @autoreleasepool {
        if (NSString* const name = foundationText(key)) // or nothing is there
            [impl_->domain.defaults removeObjectForKey:name];
        return std::nullopt;
    }
}

void UserDefaults::registerDefaults(const PropertyList::Dictionary& defaults) {
    @autoreleasepool {
        @try {
            if (const id values = foundationObject(defaults))
                [impl_->domain.defaults registerDefaults:values];
        } @catch (NSException*) { // the system refuses
        }
    }
    ObservedSettings::shared().compare();
}

std::unique_ptr<NativeSetting> UserDefaults::nativeSetting(const std::string& keyPath) const {
    @autoreleasepool {
        return std::make_unique<NativeSetting>(
            std::make_unique<NativeSetting::Impl>(impl_->domain, keyPath));
    }
}

} // namespace Platform
