#pragma once

#include "Platform/Linux/Desktop/FrontWindow.h"

#include <chrono>
#include <optional>

/// The session's accessibility bus (AT-SPI 2), on which applications describe their windows. The
/// one place where a Wayland session shows other programs which window is in front.
namespace Platform::AccessibilityBus {

/// The application that holds the active frame. Absent when none does, no such bus runs (it is
/// never started for this), or the answer was not there in time. Waits; not for the main thread.
std::optional<FrontWindow> activeFrame(std::chrono::milliseconds patience);

} // namespace Platform::AccessibilityBus
