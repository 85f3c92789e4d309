#pragma once

#include "Platform/AlertPresenter.h"

namespace Platform {

/// The system's own way to show alerts, for want of a presenter that is set; without operations
/// where it has none.
AlertPresenter nativeAlertPresenter();

/// Runs the task on the main thread, later. Unlike one of the main queue it holds up none of those
/// where it waits in a loop of its own, as what shows an alert does. Callable on any thread.
void runBesideMainQueue(std::function<void()> task);

} // namespace Platform
