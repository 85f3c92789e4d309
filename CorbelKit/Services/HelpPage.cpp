#include "CorbelKit/Services/HelpPage.h"

#include "CorbelKit/Services/Maker.h"
#include "Platform/Bundle.h"
#include "Platform/TextServices.h"

#include <string>

namespace CorbelKit {
namespace {

/// In lower case; empty in a program without a bundle.
std::string applicationName() {
    const auto& information = Platform::Bundle::main().infoDictionary();
    const auto found = information.find("CFBundleName");
    const auto* name = found != information.end() ? found->second.get<std::string>() : nullptr;
    return name != nullptr ? Platform::TextServices::lowercased(*name) : std::string();
}

} // namespace

std::optional<Platform::URL> helpPage(std::string_view topic) {
    auto page = Platform::URL::parse(Maker::helpPages);
    if (!page)
        return std::nullopt;
    if (const auto name = applicationName(); !name.empty())
        page = page->appending(name);
    return page->appending(topic);
}

} // namespace CorbelKit
