#include "Platform/Linux/TerminalNotifications.h"

#include <algorithm>
#include <iostream>
#include <string>

namespace Platform {
namespace {

bool isControl(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
}

} // namespace

void deliverToTerminal(const NotificationContent& content) {
    std::string line = content.title;
    for (const auto& text : {content.subtitle, content.body}) {
        if (!text.empty())
            line += " \u2014 " + text;
    }
    std::ranges::replace_if(line, isControl, ' ');
    line += '\n';
    std::cout << line << std::flush; // in one piece, as other threads print too
    std::cout.clear();               // a full disk today is no reason to be silent tomorrow
}

} // namespace Platform
