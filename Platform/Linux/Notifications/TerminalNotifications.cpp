#include "Platform/Linux/Notifications/TerminalNotifications.h"

#include "Platform/Linux/Text/TerminalLine.h"

#include <iostream>

namespace Platform {

void deliverToTerminal(const NotificationContent& content) {
    // In one piece, as other threads print too.
    std::cout << terminalLine({content.title, content.subtitle, content.body}, " \u2014 ")
              << std::flush;
    std::cout.clear(); // a full disk today is no reason to be silent tomorrow
}

} // namespace Platform
