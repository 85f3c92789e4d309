#pragma once

#include "Platform/UserNotificationCenter.h"

namespace Platform {

/// Delivers a notification as one line on standard output: where the session has no service that
/// shows notifications, its terminal does. A control character in a text is shown as a space.
void deliverToTerminal(const NotificationContent& content);

} // namespace Platform
