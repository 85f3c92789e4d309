#pragma once

#include "Platform/Connection.h"
#include "Platform/Linux/Loops/GObjectPtr.h"

namespace Platform {

/// What an answer means, whether it came from the helper or from the bus in its place.
ConnectionReply readHelperReply(GDBusMessage* message);

} // namespace Platform
