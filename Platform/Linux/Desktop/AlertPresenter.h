#pragma once

#include "Platform/Alert.h"

#include <functional>

namespace Platform {

/// Shows an alert in a window and returns true when it is dismissed; returns false at once where
/// the session has no windows. Called on any thread, several at once.
using AlertPresenter = std::function<bool(const Alert& alert)>;

/// Has alerts shown from now on: for a library of windows, once, as the process comes to have it.
/// Until then they are lines on standard error. Callable on any thread.
void setAlertPresenter(AlertPresenter presenter);

} // namespace Platform
