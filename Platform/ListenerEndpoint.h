#pragma once

#include <memory>
#include <string_view>

namespace Platform {

/// Where one listener takes connections, known to whoever it was given to and to nobody else. A
/// handle: copies mean the same listener. Usable on any thread.
class ListenerEndpoint {
public:
    /// What the system knows an endpoint by; defined by each system.
    class Impl;

    /// From the text form that the listener gave of it. On Linux that is the address of a D-Bus
    /// server, such as "unix:path=/run/user/1000/helper" (D-Bus 0.38, "Server Addresses").
    /// On macOS an endpoint has no text form. A text that is none makes an endpoint that nobody
    /// listens at: a connection to it is invalidated when it is resumed.
    explicit ListenerEndpoint(std::string_view address);

    /// From the system's own object.
    explicit ListenerEndpoint(std::shared_ptr<const Impl> impl);

    /// The system's own object; never null.
    const Impl& impl() const { return *impl_; }

private:
    std::shared_ptr<const Impl> impl_;
};

} // namespace Platform
