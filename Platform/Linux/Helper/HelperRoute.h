#pragma once

#include "Platform/Expected.h"
#include "Platform/Native/NativeConnection.h"

#include <string>

namespace Platform {

/// The way to a helper over D-Bus.
struct HelperRoute {
    std::string address;     ///< of the bus, or of the helper itself
    std::string destination; ///< the helper's name on the bus; empty without a bus
    std::string path;
    std::string interface;
    bool mayAskUser = false; ///< whether the helper may have the user authorise the call
};

/// An error where there is no bus, or no service can have such a name. Blocks on nothing.
Expected<HelperRoute> findHelperRoute(const ConnectionAddress& address);

} // namespace Platform
