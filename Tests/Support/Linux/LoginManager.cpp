#include "Tests/Support/Linux/LoginManager.h"

#include "Tests/Support/Linux/BusService.h"

#include <fcntl.h>
#include <gio/gunixfdlist.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace TestSupport {
namespace {

constexpr auto description = R"(<node><interface name="org.freedesktop.login1.Manager">
  <method name="Inhibit">
    <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="in" type="s"/>
    <arg direction="in" type="s"/><arg direction="out" type="h"/>
  </method>
</interface></node>)";

InhibitCall callOf(GDBusMethodInvocation* call) {
    const char *what = nullptr, *who = nullptr, *why = nullptr, *mode = nullptr;
    g_variant_get(g_dbus_method_invocation_get_parameters(call), "(&s&s&s&s)", &what, &who, &why,
                  &mode);
    return {.what = what, .who = who, .why = why, .mode = mode};
}

bool hasWriter(int pipe) {
    pollfd query{.fd = pipe, .events = 0, .revents = 0};
    return poll(&query, 1, 0) == 0;
}

/// Answers with the writing end of a pipe, and gives the other.
int grant(GDBusMethodInvocation* call) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    const BusReference<GUnixFDList> files(g_unix_fd_list_new_from_array(&ends[1], 1));
    g_dbus_method_invocation_return_value_with_unix_fd_list(call, g_variant_new("(h)", 0),
                                                            files.get());
    return ends[0];
}

} // namespace

LoginManager::LoginManager(const std::string& busAddress)
    : service_(std::make_unique<BusService>(
          busAddress, "org.freedesktop.login1",
          BusService::Object{.path = "/org/freedesktop/login1",
                             .interface = "org.freedesktop.login1.Manager",
                             .description = description},
          [this](GDBusMethodInvocation* call) {
              const std::shared_ptr<GDBusMethodInvocation> shared(call, g_object_unref);
              const auto grantIt = [this, shared](const InhibitCall&) {
                  granted_.push_back(grant(G_DBUS_METHOD_INVOCATION(g_object_ref(shared.get()))));
              };
              receive(callOf(call), grantIt, [call] {
                  g_dbus_method_invocation_return_dbus_error(
                      G_DBUS_METHOD_INVOCATION(g_object_ref(call)),
                      "org.freedesktop.DBus.Error.AccessDenied", "not today");
              });
          })) {}

LoginManager::~LoginManager() {
    service_.reset();
    for (const int pipe : granted_)
        close(pipe);
}

std::size_t LoginManager::inhibitorsOpen() {
    const std::lock_guard lock(mutex_);
    std::erase_if(granted_, [](int pipe) { return !hasWriter(pipe) && close(pipe) == 0; });
    return granted_.size();
}

} // namespace TestSupport
