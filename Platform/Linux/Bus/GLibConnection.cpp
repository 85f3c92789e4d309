#include "Platform/Linux/Bus/GLibConnection.h"

#include <future>
#include <system_error>

namespace Platform {

GObjectPtr<GDBusConnection>
connectWithin(std::chrono::milliseconds patience,
              const std::function<GDBusConnection*(GCancellable* cancellable)>& connect) {
    const GObjectPtr<GCancellable> cancellable(g_cancellable_new());
    try {
        auto connection = std::async(std::launch::async, connect, cancellable.get());
        if (connection.wait_for(patience) != std::future_status::ready)
            g_cancellable_cancel(cancellable.get());
        return GObjectPtr<GDBusConnection>(connection.get());
    } catch (const std::system_error&) { // no thread to be had
        return nullptr;
    }
}

} // namespace Platform
