#pragma once

#include <chrono>

namespace Benchmarks {

/// Passes over job files against `openssl dgst -sha256` on the same files, and against themselves
/// with ten times the files. Whether every ratio keeps to its limit.
bool measurePasses();

/// The agent as a process: how soon it watches, how soon it notifies of a change, what it holds at
/// rest, which is that long. Whether every figure keeps to its limit.
bool measureProcess(std::chrono::seconds rest);

} // namespace Benchmarks
