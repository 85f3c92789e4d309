#pragma once

#include <functional>

namespace CorbelKit {

/// Alerts the user that a helper tool does not answer: an alert on the main thread, which stands
/// until the user dismisses it. Callable on any thread; returns at once. `dismissed` then runs on
/// the main thread; an empty one is not called. It is the one way to report such a helper, and
/// tries nothing again.
void showHelperToolAlert(std::function<void()> dismissed = {});

} // namespace CorbelKit
