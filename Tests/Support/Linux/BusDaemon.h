#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <sys/types.h>

#include <map>
#include <string>

namespace TestSupport {

/// A message bus of its own (dbus-daemon), as a session has one. Ended with the object.
class BusDaemon {
public:
    /// The services that the bus can start: a bus name, and the command that is to take it.
    using ActivatableServices = std::map<std::string, std::string>;

    explicit BusDaemon(const ActivatableServices& services = {});
    ~BusDaemon();
    BusDaemon(const BusDaemon&) = delete;
    BusDaemon& operator=(const BusDaemon&) = delete;
    BusDaemon(BusDaemon&&) = delete;
    BusDaemon& operator=(BusDaemon&&) = delete;

    /// For DBUS_SESSION_BUS_ADDRESS.
    const std::string& address() const { return address_; }

    /// Ends the bus, as the end of a session does.
    void end();

private:
    TemporaryFolder folder_;
    std::string address_;
    pid_t process_ = -1;
};

} // namespace TestSupport
