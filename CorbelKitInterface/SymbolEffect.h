#pragma once

#include <chrono>

namespace CorbelKit {

/// How often an effect on a symbol is played. A value.
struct EffectRepeat {
    int count = 0; ///< how many times; 0: without end, with the pause between two times
    std::chrono::duration<double> pause{};

    static constexpr EffectRepeat times(int count) { return {.count = count}; }

    static constexpr EffectRepeat endlessly(std::chrono::duration<double> pause) {
        return {.pause = pause};
    }

    /// Whether this system plays an effect periodically without end (macOS does from 15.0 on).
    static bool isEndlessAvailable();
};

} // namespace CorbelKit
