#include "Platform/Bundle.h"

namespace Platform {

std::string Bundle::text(std::string_view key) const {
    const auto& dictionary = infoDictionary();
    const auto found = dictionary.find(key);
    const auto* text = found != dictionary.end() ? found->second.get<std::string>() : nullptr;
    return text != nullptr ? *text : std::string();
}

} // namespace Platform
