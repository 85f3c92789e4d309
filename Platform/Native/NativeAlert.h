#pragma once

#include "Platform/Alert.h"

namespace Platform {

/// Shows the alert as the system itself does, to the contract of `runModal`: without a presenter,
/// or where that has no windows.
void runNativeAlert(const Alert& alert);

} // namespace Platform
