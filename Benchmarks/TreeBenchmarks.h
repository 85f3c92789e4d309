#pragma once

#include <filesystem>

namespace Benchmarks {

/// A monitor of the tree: its start against `find -type d` and `inotifywait -r` (package
/// inotify-tools, left out where it is not installed), its memory, and a storm of changes in a tree
/// of its own. Whether every figure keeps to its limit.
bool measureMonitor(const std::filesystem::path& tree);

/// The tree as file items: against `find`, and its memory. Whether both keep to their limits.
bool measureFileItem(const std::filesystem::path& tree);

/// What the process has to itself and has written to.
long privateBytes();

} // namespace Benchmarks
