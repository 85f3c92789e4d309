#pragma once

#include "CorbelKit/Formats/Theme.h"

#include <memory>
#include <vector>

namespace CorbelKit {

/// The themes that count where no file holds others, new objects in the order of the cities. Their
/// fonts are those that the machine has at the time.
std::vector<std::shared_ptr<Theme>> builtInThemes();

} // namespace CorbelKit
