#pragma once

#include <string>

namespace Platform {

/// The program's name, as its bundle has it; that of its executable where the bundle has none. Any
/// thread.
std::string programName();

} // namespace Platform
