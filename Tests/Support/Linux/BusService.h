#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace TestSupport {

struct BusUnref {
    void operator()(GDBusConnection* connection) const { g_object_unref(connection); }

    void operator()(GMainContext* context) const { g_main_context_unref(context); }

    void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }

    void operator()(GVariant* variant) const { g_variant_unref(variant); }

    void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }

    void operator()(GUnixFDList* files) const { g_object_unref(files); }
};

template <class T>
using BusReference = std::unique_ptr<T, BusUnref>;

/// One stay of a service on a message bus: a connection, and the thread that serves it.
class BusService {
public:
    /// Called on the service's thread; answers the call, now or later.
    using Handler = std::function<void(GDBusMethodInvocation* call)>;

    struct Object {
        std::string path;
        std::string interface;
        const char* description; ///< introspection data with this interface alone
    };

    /// When it returns, the service has the name, or stands in line for it behind another that
    /// has. Throws when it cannot get on the bus.
    BusService(const std::string& busAddress, const std::string& name, Object object,
               Handler handler);
    ~BusService();
    BusService(const BusService&) = delete;
    BusService& operator=(const BusService&) = delete;

    /// Takes the arguments as g_variant_new returns them.
    void emit(const char* signal, GVariant* arguments);

private:
    bool appear(const std::string& busAddress, const std::string& name);
    void end();

    const Object object_;
    const Handler handler_;
    BusReference<GMainContext> context_;
    BusReference<GMainLoop> loop_;
    BusReference<GDBusConnection> connection_;
    std::thread thread_;
};

} // namespace TestSupport
