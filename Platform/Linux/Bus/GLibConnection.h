#pragma once

#include "Platform/Linux/Loops/GObjectPtr.h"

#include <chrono>
#include <functional>

namespace Platform {

/// Runs GIO's own blocking way to connect, which knows no time limit, and cancels it when the
/// patience is over; null when it failed or was cancelled. Needs no main loop; callable on any
/// thread.
GObjectPtr<GDBusConnection>
connectWithin(std::chrono::milliseconds patience,
              const std::function<GDBusConnection*(GCancellable* cancellable)>& connect);

} // namespace Platform
