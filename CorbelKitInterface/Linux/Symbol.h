#pragma once

#include <string>
#include <vector>

namespace CorbelKit {

/// The names of the icons that make up the symbol, hindmost first: the kit draws the symbols that
/// macOS brings along, one icon for each layer. Empty for a name that is not known. Main thread,
/// with the toolkit started.
std::vector<std::string> symbolLayers(const std::string& name);

} // namespace CorbelKit
