#include "Tools/JobLink/Core/Texts.h"

#include "Platform/Bundle.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/URL.h"

namespace JobLink {

std::string localizedString(std::string_view key) {
    static const Platform::NeverDestroyed<Platform::Bundle> bundle([] {
        const auto url = Platform::URL::parse("resource://" JOB_LINK_RESOURCES);
        return Platform::Bundle(url ? *url : Platform::URL::file("/"));
    }());
    return bundle.get().localizedString(key);
}

std::string localizedString(std::string_view key, std::string_view argument) {
    constexpr std::string_view place = "%@";
    auto text = localizedString(key);
    if (const auto found = text.find(place); found != std::string::npos)
        text.replace(found, place.size(), argument);
    return text;
}

} // namespace JobLink
