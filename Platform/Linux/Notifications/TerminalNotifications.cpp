#include "Platform/Linux/Notifications/TerminalNotifications.h"

#include "Platform/POSIX/TerminalLine.h"
#include "Platform/StandardOutput.h"

namespace Platform {

void deliverToTerminal(const NotificationContent& content) {
    StandardOutput::writeLine(
        terminalLine({content.title, content.subtitle, content.body}, " \u2014 "));
}

} // namespace Platform
