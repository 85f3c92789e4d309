#include "Platform/Linux/Helper/HelperSession.h"

#include "Platform/Linux/Helper/BusValues.h"
#include "Platform/Linux/Helper/HelperReply.h"
#include "Platform/PrintableText.h"

#include <utility>

namespace Platform {
namespace {

using Kind = ConnectionError::Kind;

constexpr auto helperGone = "the helper went away";

GDBusConnectionFlags flags(bool isOverBus) {
    // A set of flags, which clang's analyzer does not see in this enumeration.
    // NOLINTBEGIN(clang-analyzer-optin.core.EnumCastOutOfRange)
    const auto flags = isOverBus ? G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                       G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION
                                 : G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT;
    return static_cast<GDBusConnectionFlags>(flags);
    // NOLINTEND(clang-analyzer-optin.core.EnumCastOutOfRange)
}

void close(GDBusConnection* connection) {
    g_dbus_connection_close(connection, nullptr, nullptr, nullptr);
}

const char* orNone(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

GObjectPtr<GDBusMessage> message(const HelperRoute& route, const HelperSession::Call& call) {
    GObjectPtr<GDBusMessage> message(
        g_dbus_message_new_method_call(orNone(route.destination), route.path.c_str(),
                                       route.interface.c_str(), call.method.c_str()));
    if (route.mayAskUser) {
        g_dbus_message_set_flags(message.get(),
                                 G_DBUS_MESSAGE_FLAGS_ALLOW_INTERACTIVE_AUTHORIZATION);
    }
    GVariantBuilder arguments;
    g_variant_builder_init(&arguments, G_VARIANT_TYPE_TUPLE);
    for (const auto& argument : call.arguments)
        g_variant_builder_add_value(&arguments, busValue(argument).get());
    g_dbus_message_set_body(message.get(), g_variant_builder_end(&arguments));
    return message;
}

/// A call that was sent.
struct Sent {
    using Replied = std::function<void(std::uint64_t number, ConnectionReply reply)>;

    std::uint64_t number;
    bool isOverBus;
    Replied replied;

    // GLib is C: no exception may leave this.
    static void end(GObject* connection, GAsyncResult* result, gpointer data) noexcept {
        const std::unique_ptr<Sent> sent(static_cast<Sent*>(data));
        GError* failed = nullptr;
        const GObjectPtr<GDBusMessage> answer(g_dbus_connection_send_message_with_reply_finish(
            G_DBUS_CONNECTION(connection), result, &failed));
        const GErrorPtr error(failed);
        sent->replied(sent->number,
                      answer ? readHelperReply(answer.get()) : sent->failure(error.get()));
    }

    // The connection broke, or, rarely, the message was one that it does not take.
    ConnectionReply failure(const GError* error) const {
        auto kind = isOverBus ? Kind::invalidated : Kind::interrupted;
        if (!g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CLOSED) &&
            !g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
            kind = Kind::badCall;
        }
        return ConnectionError{
            .kind = kind, .description = printableText(error->message, ActingCharacters::spaced)};
    }
};

} // namespace

HelperSession::HelperSession(NativeConnection::Events events)
    : events_(std::move(events)) {}

void HelperSession::start(const ConnectionAddress& address) {
    auto route = findHelperRoute(address);
    if (!route) {
        lose(route.error().description);
        return;
    }
    route_ = std::move(*route);
    connect();
}

void HelperSession::call(Call call) {
    if (isEnded_)
        return;
    if (connection_) {
        send(call);
    } else {
        waiting_.push_back(std::move(call));
        if (!isConnecting_)
            connect(); // a helper without a bus that went away: anew
    }
}

void HelperSession::end() {
    isEnded_ = true;
    waiting_.clear();
    disconnect();
}

void HelperSession::connect() {
    isConnecting_ = true;
    cancellable_.reset(g_cancellable_new());
    g_dbus_connection_new_for_address(
        route_.address.c_str(), flags(isOverBus()), nullptr, cancellable_.get(),
        [](GObject* /*source*/, GAsyncResult* result, gpointer data) noexcept {
            const std::unique_ptr<Weak> weak(static_cast<Weak*>(data));
            GError* failed = nullptr;
            GObjectPtr<GDBusConnection> connection(
                g_dbus_connection_new_for_address_finish(result, &failed));
            const GErrorPtr error(failed);
            if (const auto self = weak->lock(); self && !self->isEnded_) {
                self->connected(std::move(connection), error.get());
            } else if (connection) {
                close(connection.get());
            }
        },
        std::make_unique<Weak>(weak_from_this()).release());
}

void HelperSession::connected(GObjectPtr<GDBusConnection> connection, const GError* error) {
    isConnecting_ = false;
    if (!connection) {
        lose(printableText(error->message, ActingCharacters::spaced));
        return;
    }
    connection_ = std::move(connection);
    closedHandler_ = g_signal_connect_data(
        connection_.get(), "closed",
        G_CALLBACK(+[](GDBusConnection* /*connection*/, gboolean /*remotePeerVanished*/,
                       GError* /*error*/, gpointer data) noexcept {
            if (const auto self = static_cast<Weak*>(data)->lock())
                self->closed();
        }),
        std::make_unique<Weak>(weak_from_this()).release(),
        [](gpointer data, GClosure* /*closure*/) {
            std::unique_ptr<Weak>(static_cast<Weak*>(data)).reset();
        },
        G_CONNECT_DEFAULT);
    if (g_dbus_connection_is_closed(connection_.get()) != FALSE) {
        closed(); // perhaps so soon that nobody has heard of it
        return;
    }
    if (isOverBus()) {
        nameWatch_ = std::make_unique<NameWatch>(connection_.get(), route_.destination,
                                                 [weak = weak_from_this()](const auto& owner) {
                                                     if (const auto self = weak.lock())
                                                         self->hearOwner(owner);
                                                 });
    }
    for (const auto& call : std::exchange(waiting_, {}))
        send(call);
}

void HelperSession::closed() {
    waiting_.clear();
    disconnect();
    if (isOverBus()) {
        lose("the message bus went away");
    } else {
        events_.interrupted(helperGone);
    }
}

void HelperSession::disconnect() {
    if (cancellable_)
        g_cancellable_cancel(cancellable_.get());
    nameWatch_.reset();
    peerWatch_.reset();
    if (!connection_)
        return;
    g_signal_handler_disconnect(connection_.get(), closedHandler_);
    close(connection_.get());
    connection_.reset();
}

// A helper that lets go of its name may still answer what it was asked; it is lost when it leaves
// the bus, or when another has taken its place.
void HelperSession::hearOwner(const std::string& owner) {
    if (owner.empty() || owner == peer_ || isEnded_)
        return;
    if (!peer_.empty())
        events_.interrupted("another helper took the place of the one before");
    setPeer(owner);
}

void HelperSession::setPeer(const std::string& peer) {
    peer_ = peer;
    peerWatch_ = std::make_unique<NameWatch>(connection_.get(), peer,
                                             [weak = weak_from_this()](const auto& owner) {
                                                 const auto self = weak.lock();
                                                 if (!self || !owner.empty() || self->isEnded_)
                                                     return;
                                                 self->peer_.clear();
                                                 self->peerWatch_.reset();
                                                 self->events_.interrupted(helperGone);
                                             });
}

void HelperSession::lose(std::string reason) {
    end();
    events_.invalidated(std::move(reason));
}

void HelperSession::send(const Call& call) {
    auto sent = std::make_unique<Sent>(
        Sent{.number = call.number,
             .isOverBus = isOverBus(),
             .replied = [weak = weak_from_this()](std::uint64_t number, ConnectionReply reply) {
                 if (const auto self = weak.lock(); self && !self->isEnded_)
                     self->events_.replied(number, std::move(reply));
             }});
    g_dbus_connection_send_message_with_reply(
        connection_.get(), message(route_, call).get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE,
        G_MAXINT /* no time limit */, nullptr, cancellable_.get(), Sent::end, sent.release());
}

} // namespace Platform
