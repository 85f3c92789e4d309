#include "CorbelKit/Services/SharedSettings.h"

#include "CorbelKit/Services/Defaults.h"

namespace CorbelKit {
namespace SharedSettings {

std::optional<Platform::UserDefaults> suite() {
    return Platform::UserDefaults::suite(
        Defaults::suiteName(Defaults::ApplicationGroup::mainApplication));
}

std::vector<std::string> readStringArray(std::string_view key) {
    const auto settings = suite();
    auto list = settings ? settings->stringArray(key) : std::nullopt;
    return list ? std::move(*list) : std::vector<std::string>{};
}

std::vector<std::string> readExceptions() {
    return readStringArray(Defaults::exceptions);
}

std::vector<std::string> readExcludePrefixes() {
    return readStringArray(Defaults::excludePrefixes);
}

} // namespace SharedSettings

std::optional<Platform::Error> toggleSetting(std::string_view key) {
    auto& settings = Platform::UserDefaults::standard();
    return settings.set(key, !settings.boolean(key).value_or(false));
}

} // namespace CorbelKit
