#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Where message buses are, and what may be reached there (D-Bus 0.41, "Server Addresses").
/// Callable on any thread.
namespace Platform {

/// The session's bus where the environment names one, by its address or by the user's runtime
/// folder; empty otherwise. None is ever started.
std::string sessionBusAddress();

/// The system's bus: the one that the environment names, or the well-known one.
std::string systemBusAddress();

/// The places of an address, in the order in which they are to be tried: sockets of this machine.
/// The other kinds are left out: they start programs, or ask the network for names, which waits.
std::vector<std::string> busPlaces(std::string_view address);

/// Whether a service can have the name: a well-known one, and none that a bus gives.
bool isServiceName(const std::string& name);

} // namespace Platform
