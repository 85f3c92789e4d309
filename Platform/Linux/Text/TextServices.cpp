#include "Platform/TextServices.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <optional>

namespace Platform::TextServices {
namespace {

std::string_view environmentValue(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string_view firstNonEmpty(std::initializer_list<const char*> names) {
    for (const auto* name : names) {
        if (const auto value = environmentValue(name); !value.empty())
            return value;
    }
    return {};
}

/// The "C" locale, whose messages are the programs' own, in English.
bool isUntranslated(std::string_view locale) {
    const auto name = locale.substr(0, locale.find_first_of(".@"));
    return name.empty() || name == "C" || name == "POSIX";
}

/// The script code that a locale's modifier names ("latin": "Latn"); empty when it names none.
std::string scriptOf(std::string_view modifier) {
    const auto script = u_getPropertyValueEnum(UCHAR_SCRIPT, std::string(modifier).c_str());
    if (script == UCHAR_INVALID_CODE)
        return {};
    return uscript_getShortName(static_cast<UScriptCode>(script));
}

/// The BCP 47 tag of a locale's name, language[_territory][.codeset][@modifier].
std::optional<std::string> languageTag(std::string_view locale) {
    if (isUntranslated(locale))
        return "en";
    std::string name(locale.substr(0, locale.find_first_of(".@")));
    const auto modifier = locale.substr(std::min(locale.find('@'), locale.size() - 1) + 1);
    if (const auto script = scriptOf(modifier); !script.empty())
        name.insert(std::min(name.find_first_of("_-"), name.size()), "_" + script);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale parsed(name.c_str());
    auto tag = parsed.toLanguageTag<std::string>(status);
    const auto language = std::string_view(parsed.getLanguage()).size();
    if (U_FAILURE(status) || language < 2 || language > 3 || tag.starts_with("und"))
        return std::nullopt;
    return tag;
}

void add(std::vector<std::string>& languages, std::string_view locale) {
    auto tag = languageTag(locale);
    if (tag && std::ranges::find(languages, *tag) == languages.end())
        languages.push_back(std::move(*tag));
}

} // namespace

std::vector<std::string> preferredLanguages() {
    const auto locale = firstNonEmpty({"LC_ALL", "LC_MESSAGES", "LANG"});
    if (isUntranslated(locale))
        return {"en"};
    std::vector<std::string> languages;
    for (auto list = environmentValue("LANGUAGE"); !list.empty();) {
        const auto end = std::min(list.find(':'), list.size());
        if (end > 0)
            add(languages, list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    add(languages, locale);
    if (languages.empty())
        languages.emplace_back("en");
    return languages;
}

std::string capitalized(std::string_view text) {
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToTitle(preferredLanguages().front().c_str(), 0, nullptr, text, sink, nullptr,
                              status);
    return U_SUCCESS(status) ? result : std::string(text);
}

std::string lowercased(std::string_view text) {
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, text, sink, nullptr, status);
    return U_SUCCESS(status) ? result : std::string(text);
}

} // namespace Platform::TextServices
