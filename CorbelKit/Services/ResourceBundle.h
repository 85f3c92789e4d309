#pragma once

#include "Platform/Bundle.h"

#include <string>
#include <string_view>

namespace CorbelKit {

/// The kit's own framework bundle, in the Frameworks folder of the main bundle: the kit's resources
/// stay there, although the kit's code is part of the application. A program without a bundle has
/// it beside itself, or where the kit is installed; found nowhere, it is empty, and texts stay
/// English. Callable on any thread.
const Platform::Bundle& resourceBundle();

/// The text for the English text `key` in the user's language, from the kit's string table.
/// Callable on any thread.
std::string localizedString(std::string_view key);

} // namespace CorbelKit
