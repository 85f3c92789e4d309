#pragma once

#include "Platform/Expected.h"
#include "Platform/FileHandle.h"

#include <filesystem>

namespace Platform {

/// Waits until no other process or thread holds the lock of the file, and holds it until the handle
/// is closed. The lock is a file of its own, since the file itself is replaced while it is held.
Expected<FileHandle> lockBeside(const std::filesystem::path& file);

} // namespace Platform
