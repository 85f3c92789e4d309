#pragma once

#include <atomic>
#include <chrono>
#include <functional>

namespace TestSupport {

/// Waits for the condition; false when the deadline passed without it. The deadline is generous
/// because it only ends a test that has already failed.
bool waitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds deadline = std::chrono::seconds(20));

inline bool waitUntil(const std::atomic<bool>& flag) {
    return waitUntil([&] { return flag.load(); });
}

} // namespace TestSupport
