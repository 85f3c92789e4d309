#include "Platform/Native/NativeAlert.h"

#include "Platform/Linux/Text/TerminalLine.h"

#include <iostream>

namespace Platform {

void runNativeAlert(const Alert& alert) {
    std::cerr << terminalLine({alert.messageText, alert.informativeText}, ": ") + '\n';
    std::cerr.clear(); // a terminal that is gone today is no reason to be silent tomorrow
}

} // namespace Platform
