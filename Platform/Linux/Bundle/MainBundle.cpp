#include "Platform/Linux/Bundle/MainBundle.h"

#include "Platform/Bundle.h"

namespace Platform {

std::string mainBundleText(std::string_view key) {
    const auto& dictionary = Bundle::main().infoDictionary();
    const auto found = dictionary.find(key);
    const auto* text = found != dictionary.end() ? found->second.get<std::string>() : nullptr;
    return text != nullptr ? *text : std::string();
}

} // namespace Platform
