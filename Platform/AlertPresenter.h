#pragma once

#include "Platform/Alert.h"

#include <functional>

namespace Platform {

/// What shows alerts. Called on the main thread.
struct AlertPresenter {
    /// Shows the alert, in front of those that it shows already, and returns true when it is
    /// dismissed; the rest of the application goes on meanwhile, which may ask for further ones.
    /// Returns false at once where the process has no windows.
    std::function<bool(const Alert& alert)> run;

    /// Dismisses all that are up: each `run` returns soon. May be empty, where the end of the
    /// application takes them along.
    std::function<void()> dismissAll;
};

/// Has alerts shown by the presenter from now on, process-wide: for a library of windows, once, as
/// the process comes to have it. One without operations withdraws the last. Callable on any thread.
void setAlertPresenter(AlertPresenter presenter);

/// For the application, as it is asked to end: those alerts that are up are dismissed, and those
/// that wait or are still to come are lines on standard error. Main thread.
void endAlerts();

} // namespace Platform
