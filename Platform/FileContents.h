#pragma once

#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

/// Files as a whole. Neither call waits for what lies at the path: anything but a regular file (a
/// link counts as what it leads to) is a failure. Callable on any thread.
namespace Platform::FileContents {

/// All bytes of the file; a failure also where it holds more than `largestSize` of them.
Expected<std::vector<std::byte>> read(const URL& file, std::size_t largestSize);

/// Writes in place, making the file where it is missing: after a failure it may hold a part of the
/// bytes.
std::optional<Error> write(const URL& file, std::span<const std::byte> bytes);

} // namespace Platform::FileContents
