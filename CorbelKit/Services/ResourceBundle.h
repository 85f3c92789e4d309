#pragma once

#include "Platform/Bundle.h"

#include <string>
#include <string_view>

namespace CorbelKit {

/// The kit's own framework bundle, in the Frameworks folder of the main bundle: the kit's resources
/// stay there, although the kit's code is part of the application.
const Platform::Bundle& resourceBundle();

/// The text for the English text `key` in the user's language, from the kit's string table.
std::string localizedString(std::string_view key);

} // namespace CorbelKit
