#include "Platform/Linux/Bus/SessionBus.h"

#include "Platform/Linux/Bus/GLibConnection.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/PrintableText.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace Platform {
namespace {

constexpr auto driverName = "org.freedesktop.DBus";

const char* orAny(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

bool isGone(const GError* error) {
    constexpr std::array signs = {G_DBUS_ERROR_NO_REPLY, G_DBUS_ERROR_SERVICE_UNKNOWN,
                                  G_DBUS_ERROR_NAME_HAS_NO_OWNER, G_DBUS_ERROR_DISCONNECTED};
    return g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CLOSED) != FALSE ||
           std::ranges::any_of(signs, [error](GDBusError sign) {
               return g_error_matches(error, G_DBUS_ERROR, sign) != FALSE;
           });
}

GLibBusReply failure(GError* error, const std::string& method) {
    const auto outcome =
        isGone(error) ? GLibBusReply::Outcome::gone : GLibBusReply::Outcome::refused;
    g_dbus_error_strip_remote_error(error);
    return {.outcome = outcome,
            .value = nullptr,
            .description = printableText(method + ": " + error->message, ActingCharacters::spaced)};
}

/// A call under way.
struct Call {
    DispatchQueue queue;
    std::function<void(GLibBusReply)> completion;
    std::string method; // with its interface

    // GLib is C: no exception may leave this.
    static void end(GObject* connection, GAsyncResult* result, gpointer data) noexcept {
        const std::unique_ptr<Call> call(static_cast<Call*>(data));
        GError* failed = nullptr;
        const std::shared_ptr<GVariant> value(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &failed),
            [](GVariant* variant) {
                if (variant != nullptr)
                    g_variant_unref(variant);
            });
        const GErrorPtr error(failed);
        GLibBusReply reply{
            .outcome = GLibBusReply::Outcome::answered, .value = value, .description = {}};
        if (error)
            reply = failure(error.get(), call->method);
        call->queue.async([completion = std::move(call->completion), reply = std::move(reply)] {
            completion(reply);
        });
    }
};

/// Where the signals of a subscription go.
struct Listener {
    DispatchQueue queue;
    std::function<void(GLibBusSignal)> task;

    static void hear(GDBusConnection* /*connection*/, const char* sender, const char* /*path*/,
                     const char* /*interface*/, const char* name, GVariant* arguments,
                     gpointer data) noexcept {
        const auto* listener = static_cast<const Listener*>(data);
        listener->queue.async(
            [task = listener->task,
             signal = GLibBusSignal{.sender = sender,
                                    .name = name,
                                    .arguments = {g_variant_ref(arguments), GVariantUnref()}}] {
                task(signal);
            });
    }

    static void forget(gpointer data) {
        std::unique_ptr<Listener>(static_cast<Listener*>(data)).reset();
    }
};

} // namespace

bool sessionHasBus() {
    const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address != nullptr && *address != '\0')
        return true;
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    std::error_code ignored;
    return folder != nullptr &&
           std::filesystem::is_socket(std::filesystem::path(folder) / "bus", ignored);
}

GLibBusMethod glibBusDriverMethod(std::string name, std::string replyType) {
    return {.destination = driverName,
            .path = "/org/freedesktop/DBus",
            .interface = driverName,
            .name = std::move(name),
            .replyType = std::move(replyType)};
}

GLibBusSubscription::GLibBusSubscription(GDBusConnection* connection, guint identifier)
    : connection_(connection)
    , identifier_(identifier) {}

GLibBusSubscription::~GLibBusSubscription() {
    g_dbus_connection_signal_unsubscribe(connection_, identifier_);
}

SessionBus::SessionBus(GObjectPtr<GDBusConnection> connection)
    : connection_(std::move(connection)) {}

std::unique_ptr<SessionBus> SessionBus::connect(std::chrono::milliseconds patience) {
    if (!sessionHasBus())
        return nullptr;
    auto connection = connectWithin(patience, [](GCancellable* cancellable) {
        return g_bus_get_sync(G_BUS_TYPE_SESSION, cancellable, nullptr);
    });
    if (!connection)
        return nullptr;
    g_dbus_connection_set_exit_on_close(connection.get(), FALSE);
    return std::make_unique<SessionBus>(std::move(connection));
}

void SessionBus::whenConnected(const DispatchQueue& queue,
                               std::function<void(SessionBus* bus)> task) {
    static const NeverDestroyed<DispatchQueue> connecting(
        DispatchQueue::serial("com.tarnwell.SessionBus"));
    connecting.get().async([queue, task = std::move(task)] {
        static const NeverDestroyed<std::unique_ptr<SessionBus>> bus(connect(deadline));
        queue.async([task] { task(bus.get().get()); });
    });
}

void SessionBus::call(const GLibBusMethod& method, const GVariantPtr& arguments,
                      const DispatchQueue& queue, std::function<void(GLibBusReply)> completion) {
    auto call = std::make_unique<Call>(Call{.queue = queue,
                                            .completion = std::move(completion),
                                            .method = method.interface + "." + method.name});
    const std::unique_ptr<GVariantType, decltype(&g_variant_type_free)> replyType(
        g_variant_type_new(method.replyType.c_str()), g_variant_type_free);
    g_dbus_connection_call(connection_.get(), method.destination.c_str(), method.path.c_str(),
                           method.interface.c_str(), method.name.c_str(), arguments.get(),
                           replyType.get(), G_DBUS_CALL_FLAGS_NO_AUTO_START,
                           static_cast<int>(deadline.count()), nullptr, Call::end, call.release());
}

std::unique_ptr<GLibBusSubscription>
SessionBus::subscribe(const GLibBusSignalRule& rule, const DispatchQueue& queue,
                      std::function<void(GLibBusSignal)> task) {
    auto listener = std::make_unique<Listener>(Listener{.queue = queue, .task = std::move(task)});
    const auto identifier = g_dbus_connection_signal_subscribe(
        connection_.get(), orAny(rule.sender), rule.interface.c_str(), orAny(rule.name),
        rule.path.c_str(), orAny(rule.firstArgument), G_DBUS_SIGNAL_FLAGS_NONE, Listener::hear,
        listener.release(), Listener::forget);
    return std::make_unique<GLibBusSubscription>(connection_.get(), identifier);
}

bool SessionBus::requestName(const std::string& name) {
    constexpr guint32 doNotQueue = 4;
    constexpr guint32 exists = 3;
    const auto method = glibBusDriverMethod("RequestName", "(u)");
    const auto reply =
        callAndWait(method, takeVariant(g_variant_new("(su)", name.c_str(), doNotQueue)), deadline);
    guint32 outcome = 0;
    if (reply)
        g_variant_get(reply.get(), "(u)", &outcome);
    return outcome != exists;
}

GVariantPtr SessionBus::callAndWait(const GLibBusMethod& method, const GVariantPtr& arguments,
                                    std::chrono::milliseconds patience) {
    return GVariantPtr(g_dbus_connection_call_sync(
        connection_.get(), method.destination.c_str(), method.path.c_str(),
        method.interface.c_str(), method.name.c_str(), arguments.get(),
        G_VARIANT_TYPE(method.replyType.c_str()), G_DBUS_CALL_FLAGS_NONE,
        static_cast<int>(patience.count()), nullptr, nullptr));
}

void SessionBus::whenClosed(std::function<void()> task) {
    using Task = std::function<void()>;
    g_signal_connect_data(
        connection_.get(), "closed",
        G_CALLBACK(+[](GDBusConnection* /*connection*/, gboolean /*remotePeerVanished*/,
                       GError* /*error*/, gpointer data) { (*static_cast<Task*>(data))(); }),
        std::make_unique<Task>(std::move(task)).release(),
        [](gpointer data, GClosure* /*closure*/) {
            std::unique_ptr<Task>(static_cast<Task*>(data)).reset();
        },
        G_CONNECT_DEFAULT);
}

} // namespace Platform
