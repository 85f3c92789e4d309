#pragma once

#include "Platform/FileHandle.h"

namespace Platform {

/// Opens what lies at the path, taken from the open folder (AT_FDCWD: from the current one), with
/// flags of open(2) and without ever waiting. A handle of -1 with `errno` where it cannot.
FileHandle openWithoutWaiting(int folder, const char* path, int flags);

} // namespace Platform
