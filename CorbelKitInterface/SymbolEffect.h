#pragma once

#include <chrono>

namespace CorbelKit {

/// How often an effect on a symbol is played. A value.
struct EffectRepeat {
    int count = 0;                         ///< how many times; 0: without end
    std::chrono::duration<double> pause{}; ///< between two times, in seconds

    /// One time after another, and then no more.
    static constexpr EffectRepeat times(int count) { return {.count = count}; }

    /// Without end, with a pause between two times.
    static constexpr EffectRepeat endlessly(std::chrono::duration<double> pause) {
        return {.pause = pause};
    }

    /// Whether this system plays an effect periodically without end (macOS does from 15.0 on). Any
    /// thread.
    static bool isEndlessAvailable();
};

} // namespace CorbelKit
