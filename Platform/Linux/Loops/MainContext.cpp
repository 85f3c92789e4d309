#include "Platform/Linux/Loops/MainContext.h"

#include "Platform/Linux/Loops/SourceTask.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Platform::MainContext {

void invoke(std::function<void()> task) {
    attachTask(g_idle_source_new(), nullptr, std::move(task));
}

void invokeAfter(std::chrono::nanoseconds delay, std::function<void()> task) {
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(delay).count();
    const auto interval =
        std::clamp<std::int64_t>(milliseconds, 0, std::numeric_limits<guint>::max());
    attachTask(g_timeout_source_new(static_cast<guint>(interval)), nullptr, std::move(task));
}

} // namespace Platform::MainContext
