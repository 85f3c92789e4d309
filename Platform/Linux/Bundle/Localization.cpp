#include "Platform/Linux/Bundle/Localization.h"

#include <glib.h>
#include <unicode/locid.h>

#include <algorithm>

namespace Platform {
namespace {

/// Letter case apart, and with either of the two separators that such names are written with.
bool isSameName(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, [](char a, char b) {
        const auto canonical = [](char c) { return c == '_' ? '-' : g_ascii_tolower(c); };
        return canonical(a) == canonical(b);
    });
}

std::string joined(std::string_view language, std::string_view rest) {
    return std::string(language).append("-").append(rest);
}

/// The names under which a localisation for the language may stand, best first.
std::vector<std::string> candidates(std::string languageTag) {
    std::ranges::replace(languageTag, '_', '-');
    std::vector<std::string> names{languageTag};
    UErrorCode status = U_ZERO_ERROR;
    auto locale = icu::Locale::forLanguageTag(languageTag, status);
    locale.addLikelySubtags(status);
    if (U_FAILURE(status))
        return names;
    const std::string_view language = locale.getLanguage();
    const auto written = joined(language, locale.getScript());
    names.push_back(joined(written, locale.getCountry()));
    auto shortest = locale;
    shortest.minimizeSubtags(status);
    names.push_back(shortest.toLanguageTag<std::string>(status));
    names.push_back(written);
    names.emplace_back(language);
    // The macrolanguage, and the one of its two written forms that it nearly always stands for.
    if (language == "no" || language == "nb")
        names.emplace_back(language == "no" ? "nb" : "no");
    return names;
}

} // namespace

Localizations::Localizations(std::vector<std::string> names)
    : names_(std::move(names)) {
    // Where a name is there in two spellings, the same one is always taken: the one with hyphens.
    std::ranges::sort(names_);
}

std::optional<std::string> Localizations::best(std::string_view languageTag) const {
    for (const auto& candidate : candidates(std::string(languageTag))) {
        const auto found = std::ranges::find_if(
            names_, [&](const auto& name) { return isSameName(name, candidate); });
        if (found != names_.end())
            return *found;
    }
    return std::nullopt;
}

} // namespace Platform
