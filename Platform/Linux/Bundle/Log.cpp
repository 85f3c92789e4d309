#include "Platform/Log.h"

#include <syslog.h>

#include <string>

namespace Platform {

void log(std::string_view message) {
    static const bool opened = [] {
        openlog("vesper-pro-agent", LOG_PID, LOG_USER);
        return true;
    }();
    static_cast<void>(opened);
    syslog(LOG_NOTICE, "%s", std::string(message).c_str());
}

} // namespace Platform
