#pragma once

#include <string>
#include <string_view>

/// What the windows say. Callable on any thread.
namespace JobLink {

/// The text for the English text `key` in the user's language.
std::string localizedString(std::string_view key);

/// Likewise, with `argument` in the place of "%@".
std::string localizedString(std::string_view key, std::string_view argument);

} // namespace JobLink
