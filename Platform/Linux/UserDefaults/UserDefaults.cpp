#include "Platform/UserDefaults.h"

#include "Platform/Bundle.h"
#include "Platform/Linux/UserDefaults/DomainFile.h"
#include "Platform/Linux/UserDefaults/Observations.h"
#include "Platform/Linux/UserDefaults/RegisteredDefaults.h"
#include "Platform/Linux/UserDefaults/SettingsFolder.h"
#include "Platform/NeverDestroyed.h"

#include <filesystem>
#include <utility>

namespace Platform {
namespace {

std::string standardDomain() {
    const auto& information = Bundle::main().infoDictionary();
    const auto found = information.find("CFBundleIdentifier");
    const auto* identifier =
        found != information.end() ? found->second.get<std::string>() : nullptr;
    if (identifier != nullptr && !identifier->empty())
        return *identifier;
    std::error_code failure;
    return std::filesystem::read_symlink("/proc/self/exe", failure).filename();
}

template <class T>
std::optional<T> as(const std::optional<PropertyList>& object) {
    const auto* value = object ? object->get<T>() : nullptr;
    return value != nullptr ? std::optional<T>(*value) : std::nullopt;
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
    if (!path || suiteName == standardDomain())
        return std::nullopt;
    return UserDefaults(std::make_shared<Impl>(std::move(*path)));
}

std::optional<PropertyList> UserDefaults::object(std::string_view key) const {
    return RegisteredDefaults::lookUp(impl_->file.values(), key);
}

std::optional<std::string> UserDefaults::string(std::string_view key) const {
    return as<std::string>(object(key));
}

std::optional<std::int64_t> UserDefaults::integer(std::string_view key) const {
    return as<std::int64_t>(object(key));
}

std::optional<bool> UserDefaults::boolean(std::string_view key) const {
    return as<bool>(object(key));
}

std::optional<PropertyList::Data> UserDefaults::data(std::string_view key) const {
    return as<PropertyList::Data>(object(key));
}

std::optional<std::vector<std::string>> UserDefaults::stringArray(std::string_view key) const {
    const auto array = as<PropertyList::Array>(object(key));
    if (!array)
        return std::nullopt;
    std::vector<std::string> texts;
    for (const auto& element : *array) {
        const auto* text = element.get<std::string>();
        if (text == nullptr)
            return std::nullopt;
        texts.push_back(*text);
    }
    return texts;
}

void UserDefaults::set(std::string_view key, PropertyList value) {
    impl_->file.change([&](PropertyList::Dictionary& values) {
        values.insert_or_assign(std::string(key), std::move(value));
    });
}

void UserDefaults::remove(std::string_view key) {
    impl_->file.change([&](PropertyList::Dictionary& values) {
        if (const auto found = values.find(key); found != values.end())
            values.erase(found);
    });
}

void UserDefaults::registerDefaults(const PropertyList::Dictionary& defaults) {
    RegisteredDefaults::add(defaults);
    Observations::shared().look();
}

class UserDefaults::Observation::Impl {
public:
    explicit Impl(std::shared_ptr<ObservedKey> key)
        : key_(std::move(key)) {
        Observations::shared().add(key_);
    }

    ~Impl() {
        key_->silence();
        Observations::shared().remove(key_);
    }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

private:
    const std::shared_ptr<ObservedKey> key_;
};

UserDefaults::Observation::Observation(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

UserDefaults::Observation::Observation(Observation&& other) noexcept = default;
UserDefaults::Observation&
UserDefaults::Observation::operator=(Observation&& other) noexcept = default;
UserDefaults::Observation::~Observation() = default;

UserDefaults::Observation UserDefaults::observe(std::string keyPath, Handler handler) const {
    return Observation(std::make_unique<Observation::Impl>(
        std::make_shared<ObservedKey>(impl_->file, std::move(keyPath), std::move(handler))));
}

} // namespace Platform
