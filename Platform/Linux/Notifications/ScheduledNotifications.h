#pragma once

#include <chrono>

namespace Platform {

/// A notification that is scheduled is delivered also when the process ends before its time, and
/// here nobody but the process does it: delivers at once what is scheduled, and waits for that as
/// long as the patience lasts, and a tenth of a second. Nothing is delivered later than at once
/// from then on. Main thread, once, when the application has ended.
void deliverScheduledNotifications(std::chrono::milliseconds patience);

} // namespace Platform
