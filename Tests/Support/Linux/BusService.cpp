#include "Tests/Support/Linux/BusService.h"

#include <future>
#include <stdexcept>
#include <utility>

namespace TestSupport {

BusService::BusService(const std::string& busAddress, const std::string& name, Object object,
                       Handler handler)
    : object_(std::move(object))
    , handler_(std::move(handler))
    , context_(g_main_context_new())
    , loop_(g_main_loop_new(context_.get(), FALSE)) {
    std::promise<bool> started;
    auto isThere = started.get_future();
    thread_ = std::thread([this, &busAddress, &name, &started] {
        g_main_context_push_thread_default(context_.get());
        const bool isOnTheBus = appear(busAddress, name);
        started.set_value(isOnTheBus);
        if (isOnTheBus)
            g_main_loop_run(loop_.get());
        g_main_context_pop_thread_default(context_.get());
    });
    if (!isThere.get()) {
        end();
        throw std::runtime_error(name + " cannot get on the bus");
    }
}

BusService::~BusService() {
    end();
}

void BusService::emit(const char* signal, GVariant* arguments) {
    g_dbus_connection_emit_signal(connection_.get(), nullptr, object_.path.c_str(),
                                  object_.interface.c_str(), signal, arguments, nullptr);
    g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
}

bool BusService::appear(const std::string& busAddress, const std::string& name) {
    connection_.reset(g_dbus_connection_new_for_address_sync(
        busAddress.c_str(),
        // NOLINTBEGIN(clang-analyzer-optin.core.EnumCastOutOfRange): a set of flags
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    // NOLINTEND(clang-analyzer-optin.core.EnumCastOutOfRange)
    if (!connection_)
        return false;
    static constexpr GDBusInterfaceVTable table{
        .method_call = [](GDBusConnection* /*connection*/, const char* /*sender*/,
                          const char* /*path*/, const char* /*interface*/, const char* /*method*/,
                          GVariant* /*arguments*/, GDBusMethodInvocation* invocation,
                          gpointer data) { static_cast<BusService*>(data)->handler_(invocation); },
        .get_property = nullptr,
        .set_property = nullptr,
        .padding = {}};
    const BusReference<GDBusNodeInfo> info(
        g_dbus_node_info_new_for_xml(object_.description, nullptr));
    g_dbus_connection_register_object(connection_.get(), object_.path.c_str(), info->interfaces[0],
                                      &table, this, nullptr, nullptr);
    const guint32 standInLine = 0;
    const BusReference<GVariant> reply(g_dbus_connection_call_sync(
        connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", name.c_str(), standInLine), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    return reply != nullptr;
}

void BusService::end() {
    if (connection_) {
        // What was answered is answered.
        g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
        g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
    }
    // From within the loop: to one that does not run yet, it would mean nothing.
    GSource* const quit = g_idle_source_new();
    g_source_set_callback(
        quit,
        [](gpointer loop) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(loop));
            return G_SOURCE_REMOVE;
        },
        loop_.get(), nullptr);
    g_source_attach(quit, context_.get());
    g_source_unref(quit);
    if (thread_.joinable())
        thread_.join();
    connection_.reset();
}

} // namespace TestSupport
