#include "Platform/Log.h"

#include "Platform/Linux/Bundle/ProgramName.h"
#include "Platform/NeverDestroyed.h"

#include <syslog.h>

#include <string>

namespace Platform {
namespace {

/// The program's name as a command would have it: "My Program" logs as "my-program". Readers of the
/// log take the identifier to end at white space, a colon or a bracket (RFC 3164, section 5.3).
std::string identifier() {
    auto name = programName();
    for (char& character : name) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        } else if (character <= ' ' || character == ':' || character == '[' || character > '~') {
            character = '-';
        }
    }
    return name;
}

} // namespace

void log(std::string_view message) {
    // Kept, as the system's log keeps no copy.
    static const NeverDestroyed<std::string> name(identifier());
    static const bool opened = [] {
        openlog(name.get().c_str(), LOG_PID, LOG_USER);
        return true;
    }();
    static_cast<void>(opened);
    syslog(LOG_NOTICE, "%s", std::string(message).c_str());
}

} // namespace Platform
