#include "Platform/Linux/Desktop/AccessibilityBus.h"

#include "Platform/Linux/Bus/SessionBus.h"

#include <gio/gio.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace Platform::AccessibilityBus {
namespace {

template <auto release>
struct Release {
    void operator()(auto* handle) const { release(handle); }
};

using Connection = std::unique_ptr<GDBusConnection, Release<g_object_unref>>;
using Variant = std::unique_ptr<GVariant, Release<g_variant_unref>>;
using Cancellable = std::unique_ptr<GCancellable, Release<g_object_unref>>;
using MainContext = std::unique_ptr<GMainContext, Release<g_main_context_unref>>;

constexpr auto accessibleInterface = "org.a11y.atspi.Accessible";
constexpr auto rootPath = "/org/a11y/atspi/accessible/root";

// No bus and no application is started to be asked what it shows.
constexpr auto callFlags = G_DBUS_CALL_FLAGS_NO_AUTO_START;

class Deadline {
public:
    explicit Deadline(std::chrono::milliseconds patience)
        : end_(Clock::now() + patience) {}

    /// For a call of D-Bus, which takes 0 and less for something else.
    int millisecondsLeft() const {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
        return static_cast<int>(std::max<std::int64_t>(left.count(), 1));
    }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point end_;
};

/// An object of an application on the bus.
struct Accessible {
    std::string busName;
    std::string path;
};

struct Method {
    const char* interface;
    const char* name;
};

/// The values that the method returns; null when it failed or returned others than `type`.
Variant call(const Connection& connection, const Accessible& object, Method method,
             GVariant* arguments, const char* type, const Deadline& deadline) {
    return Variant(g_dbus_connection_call_sync(connection.get(), object.busName.c_str(),
                                               object.path.c_str(), method.interface, method.name,
                                               arguments, G_VARIANT_TYPE(type), callFlags,
                                               deadline.millisecondsLeft(), nullptr, nullptr));
}

Connection connect(const Deadline& deadline) {
    if (!sessionHasBus())
        return nullptr;
    const Connection session(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!session)
        return nullptr;
    g_dbus_connection_set_exit_on_close(session.get(), FALSE);
    const auto reply =
        call(session, {.busName = "org.a11y.Bus", .path = "/org/a11y/bus"},
             {.interface = "org.a11y.Bus", .name = "GetAddress"}, nullptr, "(s)", deadline);
    if (!reply)
        return nullptr;
    const char* address = nullptr;
    g_variant_get(reply.get(), "(&s)", &address);
    // A set of flags, which clang's analyzer does not see in this enumeration.
    // NOLINTBEGIN(clang-analyzer-optin.core.EnumCastOutOfRange)
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    // NOLINTEND(clang-analyzer-optin.core.EnumCastOutOfRange)
    return Connection(
        g_dbus_connection_new_for_address_sync(address, flags, nullptr, nullptr, nullptr));
}

/// Asks all applications at once, so that one that hangs does not keep the others from answering.
class FrameSearch {
public:
    FrameSearch(const Connection& connection, const Deadline& deadline)
        : connection_(connection)
        , deadline_(deadline) {}

    /// The application's root object.
    std::optional<Accessible> run() {
        g_main_context_push_thread_default(context_.get());
        askForChildren({.busName = "org.a11y.atspi.Registry", .path = rootPath},
                       [this](const Accessible& application) { askForFrames(application); });
        while (pending_ > 0) // every call ends, by its deadline at the latest
            g_main_context_iteration(context_.get(), TRUE);
        g_main_context_pop_thread_default(context_.get());
        return found_;
    }

private:
    using Receiver = std::function<void(GVariant* values)>;

    // Far more than any desktop shows; a bus that claims more is not worth its time.
    static constexpr int mostCalls = 1000;
    static constexpr guint32 activeState = 1U << 1U; // ATSPI_STATE_ACTIVE

    void askForFrames(const Accessible& application) {
        askForChildren(application, [this, application](const Accessible& frame) {
            ask(frame, "GetState", "(au)", [this, application](GVariant* values) {
                const Variant states(g_variant_get_child_value(values, 0));
                guint32 first = 0;
                if (g_variant_n_children(states.get()) > 0)
                    g_variant_get_child(states.get(), 0, "u", &first);
                if ((first & activeState) != 0)
                    finish(application);
            });
        });
    }

    void askForChildren(const Accessible& object,
                        std::function<void(const Accessible& child)> receiver) {
        ask(object, "GetChildren", "(a(so))", [receiver = std::move(receiver)](GVariant* values) {
            const Variant children(g_variant_get_child_value(values, 0));
            for (gsize index = 0; index < g_variant_n_children(children.get()); ++index) {
                const char* busName = nullptr;
                const char* path = nullptr;
                g_variant_get_child(children.get(), index, "(&s&o)", &busName, &path);
                receiver({.busName = busName, .path = path});
            }
        });
    }

    void ask(const Accessible& object, const char* method, const char* type, Receiver receiver) {
        if (found_ || ++calls_ > mostCalls || g_dbus_is_name(object.busName.c_str()) == FALSE)
            return;
        ++pending_;
        auto question =
            std::make_unique<Question>(Question{.search = *this, .receiver = std::move(receiver)});
        g_dbus_connection_call(connection_.get(), object.busName.c_str(), object.path.c_str(),
                               accessibleInterface, method, nullptr, G_VARIANT_TYPE(type),
                               callFlags, deadline_.millisecondsLeft(), cancellable_.get(),
                               &Question::end, question.release());
    }

    void finish(const Accessible& application) {
        found_ = application;
        g_cancellable_cancel(cancellable_.get());
    }

    struct Question {
        FrameSearch& search;
        Receiver receiver;

        static void end(GObject* connection, GAsyncResult* result, gpointer data) noexcept {
            const std::unique_ptr<Question> question(static_cast<Question*>(data));
            --question->search.pending_;
            const Variant values(
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr));
            if (values && !question->search.found_)
                question->receiver(values.get());
        }
    };

    const Connection& connection_;
    const Deadline& deadline_;
    const MainContext context_{g_main_context_new()};
    const Cancellable cancellable_{g_cancellable_new()};
    std::optional<Accessible> found_;
    int pending_ = 0;
    int calls_ = 0;
};

std::string nameOf(const Connection& connection, const Accessible& application,
                   const Deadline& deadline) {
    const auto reply = call(connection, application,
                            {.interface = "org.freedesktop.DBus.Properties", .name = "Get"},
                            g_variant_new("(ss)", accessibleInterface, "Name"), "(v)", deadline);
    if (!reply)
        return {};
    GVariant* value = nullptr;
    g_variant_get(reply.get(), "(v)", &value);
    const Variant name(value);
    if (g_variant_is_of_type(name.get(), G_VARIANT_TYPE_STRING) == FALSE)
        return {};
    return g_variant_get_string(name.get(), nullptr);
}

pid_t processOf(const Connection& connection, const Accessible& application,
                const Deadline& deadline) {
    const auto reply =
        call(connection, {.busName = "org.freedesktop.DBus", .path = "/org/freedesktop/DBus"},
             {.interface = "org.freedesktop.DBus", .name = "GetConnectionUnixProcessID"},
             g_variant_new("(s)", application.busName.c_str()), "(u)", deadline);
    guint32 process = 0;
    if (reply)
        g_variant_get(reply.get(), "(u)", &process);
    return static_cast<pid_t>(process);
}

} // namespace

std::optional<FrontWindow> activeFrame(std::chrono::milliseconds patience) {
    const Deadline deadline(patience);
    const auto connection = connect(deadline);
    if (!connection)
        return std::nullopt;
    const auto application = FrameSearch(connection, deadline).run();
    if (!application)
        return std::nullopt;
    return FrontWindow{.instanceName = {},
                       .className = nameOf(connection, *application, deadline),
                       .process = processOf(connection, *application, deadline)};
}

} // namespace Platform::AccessibilityBus
