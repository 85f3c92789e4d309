#pragma once

#include "Platform/DispatchQueue.h"

#include <functional>
#include <vector>

namespace Vesper_Pro_Agent {

/// Has works done on a queue where they may block, for ever if need be. Calls the completion once,
/// on the main thread: when all have been done, and at the latest after a second. Main thread.
void workPatiently(const Platform::DispatchQueue& queue,
                   const std::vector<std::function<void()>>& works,
                   std::function<void()> completion);

} // namespace Vesper_Pro_Agent
