#pragma once

namespace Platform {

/// Runs the handler at the bottom of a call by the system: what it leaves to the autorelease pool
/// is released at once, and an exception ends the process here rather than unwind the system.
template <class Handler>
void runAtBoundary(const Handler& handler) noexcept {
    @autoreleasepool {
        handler();
    }
}

} // namespace Platform
