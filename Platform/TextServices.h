#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Text by the rules of Unicode and of the user's language. Text is UTF-8. Callable on any thread.
namespace Platform::TextServices {

/// The user's languages, best first, as BCP 47 tags ("pt-BR", "zh-Hant-TW"); never empty.
std::vector<std::string> preferredLanguages();

/// Each word begins with a capital, by the rules of the user's language.
std::string capitalized(std::string_view text);

/// Lower case by the rules of no language in particular.
std::string lowercased(std::string_view text);

} // namespace Platform::TextServices
