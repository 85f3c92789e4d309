#pragma once

#include "Platform/Connection.h"
#include "Platform/Linux/Loops/GObjectPtr.h"

namespace Platform {

/// What an answer means, whether it came from the helper or from the bus in its place.
ConnectionReply readHelperReply(GDBusMessage* message);

/// One line, whatever the other side wrote.
std::string oneLine(std::string text);

} // namespace Platform
