#pragma once

#include <string_view>

/// The names under which the maker's applications keep their settings.
namespace CorbelKit::Defaults {

/// The main application's lists of jobs that its agent is not to report.
inline constexpr std::string_view exceptions = "Exceptions";
inline constexpr std::string_view excludePrefixes = "ExcludePrefixes";

/// Whether an older main application starts its agent.
inline constexpr std::string_view runAgent = "RunAgent";

/// Applications that share settings.
enum class ApplicationGroup { data, mainApplication, textEditor };

constexpr std::string_view suiteName(ApplicationGroup group) {
    switch (group) {
    case ApplicationGroup::data:
        return "QX42K7M3ZP.com.tarnwell.Data";
    case ApplicationGroup::mainApplication:
        return "QX42K7M3ZP.com.tarnwell.Vesper";
    case ApplicationGroup::textEditor:
        return "QX42K7M3ZP.com.tarnwell.Brindle";
    }
    return {};
}

} // namespace CorbelKit::Defaults
