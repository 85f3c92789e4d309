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

std::optional<Error> change(PropertyList::Dictionary& settings, const std::string& label,
                            bool isExcepted) {
    const std::string key(Defaults::exceptions);
    auto stored = settings.find(key);
    if (stored == settings.end())
        stored = settings.emplace(key, PropertyList::Array()).first;
    auto* const list = std::get_if<PropertyList::Array>(&stored->second.value());
    const auto isText = [](const PropertyList& entry) {
        return entry.get<std::string>() != nullptr;
    };
    if (list == nullptr || !std::ranges::all_of(*list, isText))
        return Error{key + " is not a list of texts"};
    const auto isLabel = [&](const PropertyList& entry) {
        return *entry.get<std::string>() == label;
    };
    if (!isExcepted) {
        std::erase_if(*list, isLabel);
    } else if (std::ranges::none_of(*list, isLabel)) {
        list->emplace_back(label);
    }
    return std::nullopt;
}

} // namespace

bool contain(const std::string& label) {
    return std::ranges::count(CorbelKit::SharedSettings::readExceptions(), label) > 0;
}

std::optional<Error> set(const std::string& label, bool isExcepted) {
    return Platform::SettingsDomains::change(
        Defaults::suiteName(Defaults::ApplicationGroup::mainApplication),
        [&](PropertyList::Dictionary& settings) { return change(settings, label, isExcepted); });
}

} // namespace JobLink::Exceptions
