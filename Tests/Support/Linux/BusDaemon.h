#pragma once

#include "Tests/Support/Linux/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <map>
#include <memory>

namespace TestSupport {

/// A message bus of its own (dbus-daemon), as a session has one. Ended with the object.
class BusDaemon {
public:
    /// The services that the bus can start: a bus name, and the command that is to take it.
    using ActivatableServices = std::map<std::string, std::string>;

    explicit BusDaemon(const ActivatableServices& services = {});

    /// For DBUS_SESSION_BUS_ADDRESS.
    const std::string& address() const { return address_; }

    /// The socket at the address.
    std::filesystem::path socket() const { return folder_ / "bus"; }

    /// Ends the bus, as the end of a session does.
    void end() { daemon_->end(SIGTERM); }

private:
    TemporaryFolder folder_;
    std::unique_ptr<ChildProcess> daemon_;
    std::string address_;
};

} // namespace TestSupport
