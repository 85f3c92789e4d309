#include "Tools/JobLink/Core/Exceptions.h"

#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/SharedSettings.h"
#include "Platform/Linux/Public/SettingsDomains.h"

#include <algorithm>

namespace JobLink::Exceptions {
namespace {

namespace Defaults = CorbelKit::Defaults;
using Platform::Error;
using Platform::PropertyList;

std::optional<Error> change(PropertyList::Dictionary& settings, const std::string& key,
                            const std::string& text, bool isListed) {
    auto stored = settings.find(key);
    if (stored == settings.end())
        stored = settings.emplace(key, PropertyList::Array()).first;
    auto* const list = std::get_if<PropertyList::Array>(&stored->second.value());
    const auto isText = [](const PropertyList& entry) {
        return entry.get<std::string>() != nullptr;
    };
    if (list == nullptr || !std::ranges::all_of(*list, isText))
        return Error{key + " is not a list of texts"};
    const auto isSame = [&](const PropertyList& entry) {
        return *entry.get<std::string>() == text;
    };
    if (!isListed) {
        std::erase_if(*list, isSame);
    } else if (std::ranges::none_of(*list, isSame)) {
        list->emplace_back(text);
    }
    return std::nullopt;
}

} // namespace

bool contain(const std::string& label) {
    return std::ranges::count(CorbelKit::SharedSettings::readExceptions(), label) > 0;
}

std::optional<Error> set(const std::string& label, bool isExcepted) {
    return setListed(Defaults::exceptions, label, isExcepted);
}

std::optional<Error> setListed(std::string_view key, const std::string& text, bool isListed) {
    return Platform::SettingsDomains::change(
        Defaults::suiteName(Defaults::ApplicationGroup::mainApplication),
        [&](PropertyList::Dictionary& settings) {
            return change(settings, std::string(key), text, isListed);
        });
}

} // namespace JobLink::Exceptions
