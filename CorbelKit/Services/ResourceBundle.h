#pragma once

#include "Platform/Bundle.h"

#include <optional>
#include <string>
#include <string_view>

namespace CorbelKit {

/// The kit's own framework bundle, with its texts, layouts and symbols: in the Frameworks folder of
/// the main bundle, or beside a program without a bundle; where neither is there, what the library
/// itself holds (Linux) or the bundle where the kit was meant to be installed (macOS). Found
/// nowhere, it is empty, texts stay English, and one line on standard error says where it was
/// sought. Callable on any thread.
const Platform::Bundle& resourceBundle();

/// The file of the name among the bundle's resources; where there is none, one line on standard
/// error says so. Callable on any thread.
std::optional<Platform::URL> requiredResource(const Platform::Bundle& bundle,
                                              const std::string& name);

/// The text for the English text `key` in the user's language, from the kit's string table.
/// Callable on any thread.
std::string localizedString(std::string_view key);

} // namespace CorbelKit
