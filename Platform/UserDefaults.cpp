#include "Platform/UserDefaults.h"

#include "Platform/Native/ObservedSettings.h"

#include <utility>

namespace Platform {
namespace {

template <class T>
std::optional<T> as(const std::optional<PropertyList>& object) {
    const auto* value = object ? object->get<T>() : nullptr;
    return value != nullptr ? std::optional<T>(*value) : std::nullopt;
}

} // namespace

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

class UserDefaults::Observation::Impl {
public:
    explicit Impl(std::shared_ptr<ObservedSetting> setting)
        : setting_(std::move(setting)) {
        ObservedSettings::shared().add(setting_);
    }

    ~Impl() {
        setting_->silence();
        ObservedSettings::shared().remove(setting_);
    }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

private:
    const std::shared_ptr<ObservedSetting> setting_;
};

UserDefaults::Observation::Observation(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

UserDefaults::Observation::Observation(Observation&& other) noexcept = default;
UserDefaults::Observation&
UserDefaults::Observation::operator=(Observation&& other) noexcept = default;
UserDefaults::Observation::~Observation() = default;

UserDefaults::Observation UserDefaults::observe(const std::string& keyPath, Handler handler) const {
    return Observation(std::make_unique<Observation::Impl>(
        std::make_shared<ObservedSetting>(nativeSetting(keyPath), keyPath, std::move(handler))));
}

} // namespace Platform
