#pragma once

#include "Platform/FileHandle.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>

namespace Platform {

/// Waits until no other process or thread holds the lock of the file, and holds it until the handle
/// is closed. The lock is a file of its own, since the file itself is replaced while it is held.
/// Absent when it cannot be made.
std::optional<FileHandle> lockBeside(const std::filesystem::path& file);

/// Puts a new file with the content in place, readable by the user alone: after a failure or a loss
/// of power there stands either the old file or the new one. The file's lock is held.
bool replaceFile(const std::filesystem::path& file, std::span<const std::byte> content);

} // namespace Platform
