#include "Platform/UserDefaults.h"

#include "Platform/Bundle.h"
#include "Platform/Linux/Settings/DomainFile.h"
#include "Platform/Linux/Settings/NativeSetting.h"
#include "Platform/Linux/Settings/RegisteredDefaults.h"
#include "Platform/Linux/Settings/SettingsFolder.h"
#include "Platform/Native/ObservedSettings.h"
#include "Platform/NeverDestroyed.h"

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace Platform {
namespace {

std::string standardDomain() {
    auto identifier = Bundle::main().text("CFBundleIdentifier");
    if (!identifier.empty())
        return identifier;
    std::error_code failure; // whatever name it was called by
    return std::filesystem::read_symlink("/proc/self/exe", failure).filename();
}

} // namespace

class UserDefaults::Impl {
public:
    explicit Impl(std::filesystem::path path)
        : file(std::move(path)) {}

    const DomainFile file;
};

UserDefaults::UserDefaults(std::shared_ptr<const Impl> impl)
    : impl_(std::move(impl)) {}

UserDefaults& UserDefaults::standard() {
    static const NeverDestroyed<UserDefaults> defaults(UserDefaults(
        std::make_shared<Impl>(settingsFile(standardDomain()).value_or(std::filesystem::path()))));
    return defaults.get();
}

std::optional<UserDefaults> UserDefaults::suite(std::string_view suiteName) {
    auto path = settingsFile(suiteName);
    if (!path)
        return std::nullopt;
    return UserDefaults(std::make_shared<Impl>(std::move(*path)));
}

std::optional<PropertyList> UserDefaults::object(std::string_view key) const {
    return RegisteredDefaults::lookUp(impl_->file.values(), key);
}

std::optional<Error> UserDefaults::set(std::string_view key, PropertyList value) {
    return impl_->file.change([&](PropertyList::Dictionary& values) {
        values.insert_or_assign(std::string(key), std::move(value));
    });
}

std::optional<Error> UserDefaults::remove(std::string_view key) {
    return impl_->file.change([&](PropertyList::Dictionary& values) {
        if (const auto found = values.find(key); found != values.end())
            values.erase(found);
    });
}

void UserDefaults::registerDefaults(const PropertyList::Dictionary& defaults) {
    RegisteredDefaults::add(defaults);
    ObservedSettings::shared().compare();
}

std::unique_ptr<NativeSetting> UserDefaults::nativeSetting(const std::string& keyPath) const {
    return std::make_unique<NativeSetting>(
        std::make_unique<NativeSetting::Impl>(impl_->file, keyPath));
}

} // namespace Platform
