#include "Platform/Linux/Bus/SystemBus.h"

#include "Platform/Linux/Bus/GLibConnection.h"
#include "Platform/NeverDestroyed.h"

#include <gio/gunixfdlist.h>

#include <algorithm>
#include <utility>

namespace Platform {
namespace {

using Milliseconds = std::chrono::milliseconds;

// GLib takes 0 and less for something else.
Milliseconds timeLeft(std::chrono::steady_clock::time_point end) {
    const auto left = std::chrono::ceil<Milliseconds>(end - std::chrono::steady_clock::now());
    return std::max(left, Milliseconds(1));
}

// Unlike the session's, it is never started by who asks for its address.
std::string currentAddress() {
    const GStringPtr address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr));
    return address ? address.get() : "";
}

// Not GIO's shared one: that stays closed for good when the bus is started anew.
GObjectPtr<GDBusConnection> connect(const std::string& address, Milliseconds patience) {
    return connectWithin(patience, [&address](GCancellable* cancellable) {
        // A set of flags, which clang's analyzer does not see in this enumeration.
        // NOLINTBEGIN(clang-analyzer-optin.core.EnumCastOutOfRange)
        constexpr auto flags =
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        // NOLINTEND(clang-analyzer-optin.core.EnumCastOutOfRange)
        return g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, cancellable,
                                                      nullptr);
    });
}

std::optional<FileHandle> fileIn(GVariant* reply, GUnixFDList* files) {
    gint32 index = -1;
    g_variant_get(reply, "(h)", &index);
    if (files == nullptr || index < 0 || index >= g_unix_fd_list_get_length(files))
        return std::nullopt;
    const int descriptor = g_unix_fd_list_get(files, index, nullptr); // a duplicate, close-on-exec
    return descriptor == -1 ? std::nullopt : std::optional<FileHandle>(descriptor);
}

} // namespace

SystemBus& SystemBus::shared() {
    static const NeverDestroyed<SystemBus> bus;
    return bus.get();
}

std::optional<FileHandle> SystemBus::openFile(const GLibBusMethod& method,
                                              const GVariantPtr& arguments, Milliseconds patience) {
    const auto end = Clock::now() + patience;
    const auto connection = connectionUntil(end);
    if (!connection)
        return std::nullopt;
    GUnixFDList* received = nullptr;
    const GVariantPtr reply(g_dbus_connection_call_with_unix_fd_list_sync(
        connection.get(), method.destination.c_str(), method.path.c_str(), method.interface.c_str(),
        method.name.c_str(), arguments.get(), G_VARIANT_TYPE(method.replyType.c_str()),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(timeLeft(end).count()), nullptr,
        &received, nullptr, nullptr));
    const GObjectPtr<GUnixFDList> files(received);
    if (!reply) {
        const std::lock_guard lock(mutex_);
        restIfPast(end);
        return std::nullopt;
    }
    return fileIn(reply.get(), files.get());
}

void SystemBus::restIfPast(Clock::time_point end) {
    constexpr auto rest = std::chrono::minutes(1);
    const auto now = Clock::now();
    if (now >= end)
        restsUntil_ = now + rest;
}

// The lock is held while connecting: whoever comes meanwhile shares the outcome.
GObjectPtr<GDBusConnection> SystemBus::connectionUntil(Clock::time_point end) {
    auto address = currentAddress();
    const std::lock_guard lock(mutex_);
    if (address != address_) {
        address_ = std::move(address);
        connection_.reset();
        restsUntil_ = {};
    }
    if (address_.empty() || Clock::now() < restsUntil_) // GLib asserts that there is an address
        return nullptr;
    if (!connection_ || g_dbus_connection_is_closed(connection_.get()) != FALSE)
        connection_ = connect(address_, timeLeft(end));
    if (!connection_) {
        restIfPast(end);
        return nullptr;
    }
    return GObjectPtr<GDBusConnection>(
        static_cast<GDBusConnection*>(g_object_ref(connection_.get())));
}

} // namespace Platform
