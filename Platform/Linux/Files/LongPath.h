#pragma once

#include "Platform/FileHandle.h"

#include <string_view>

namespace Platform {

/// Opens a folder with flags of open(2), in as many steps as its path needs: the system takes no
/// path of PATH_MAX bytes, but lets trees grow deeper. A handle of -1 with `errno` where it cannot.
FileHandle openLongPath(std::string_view path, int flags);

} // namespace Platform
