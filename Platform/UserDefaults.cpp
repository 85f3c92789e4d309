#include "Platform/UserDefaults.h"

#include "Platform/Native/ObservedSettings.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <type_traits>
#include <utility>

namespace Platform {
namespace {

template <class T>
std::optional<T> as(const std::optional<PropertyList>& object) {
    const auto* value = object ? object->get<T>() : nullptr;
    return value != nullptr ? std::optional<T>(*value) : std::nullopt;
}

using Integer = std::optional<std::int64_t>;

Integer wholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto* const begin = std::to_address(text.begin());
    const auto* const end = std::to_address(text.end());
    const auto [rest, failure] = std::from_chars(begin, end, number);
    return failure == std::errc() && rest == end ? Integer(number) : std::nullopt;
}

Integer wholeNumber(double number) {
    constexpr double limit = 0x1p63;
    return number >= -limit && number < limit ? Integer(static_cast<std::int64_t>(number))
                                              : std::nullopt;
}

/// The word is of small letters.
bool isWord(std::string_view text, std::string_view word) {
    return std::ranges::equal(text, word, [](char one, char other) {
        return (one >= 'A' && one <= 'Z' ? one - 'A' + 'a' : one) == other;
    });
}

std::optional<bool> switchOf(std::string_view text) {
    if (isWord(text, "yes") || isWord(text, "true"))
        return true;
    if (isWord(text, "no") || isWord(text, "false"))
        return false;
    const auto number = wholeNumber(text);
    return number ? std::optional(*number != 0) : std::nullopt;
}

template <class Kind>
constexpr bool isNumber = std::is_arithmetic_v<Kind>; // a switch is one

} // namespace

std::optional<std::string> UserDefaults::string(std::string_view key) const {
    return as<std::string>(object(key));
}

std::optional<std::int64_t> UserDefaults::integer(std::string_view key) const {
    const auto convert = [](const auto& value) -> Integer {
        using Kind = std::remove_cvref_t<decltype(value)>;
        if constexpr (std::is_same_v<Kind, std::string> || std::is_same_v<Kind, double>) {
            return wholeNumber(value);
        } else if constexpr (isNumber<Kind> && !std::is_same_v<Kind, std::uint64_t>) {
            return std::int64_t{value};
        } else {
            return std::nullopt;
        }
    };
    const auto value = object(key);
    return value ? std::visit(convert, value->value()) : std::nullopt;
}

std::optional<bool> UserDefaults::boolean(std::string_view key) const {
    const auto convert = [](const auto& value) -> std::optional<bool> {
        using Kind = std::remove_cvref_t<decltype(value)>;
        if constexpr (std::is_same_v<Kind, std::string>) {
            return switchOf(value);
        } else if constexpr (isNumber<Kind>) {
            return value != Kind{};
        } else {
            return std::nullopt;
        }
    };
    const auto value = object(key);
    return value ? std::visit(convert, value->value()) : std::nullopt;
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
