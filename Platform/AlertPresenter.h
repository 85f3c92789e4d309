#pragma once

#include "Platform/Alert.h"

#include <functional>

namespace Platform {

/// Shows an alert and returns true when the user has dismissed it; returns false at once where it
/// has no windows. Called on any thread, concurrently.
using AlertPresenter = std::function<bool(const Alert& alert)>;

/// Has `runModal` ask the presenter first from now on, process-wide: for a library of windows,
/// once, as the process comes to have it. An empty one withdraws the last. Callable on any thread.
void setAlertPresenter(AlertPresenter presenter);

} // namespace Platform
