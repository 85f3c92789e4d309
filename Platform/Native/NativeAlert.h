#pragma once

#include "Platform/AlertPresenter.h"

namespace Platform {

/// The system's own way to show alerts, for want of a presenter that is set; without operations
/// where it has none.
AlertPresenter nativeAlertPresenter();

} // namespace Platform
