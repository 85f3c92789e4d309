// A helper tool for tests: answers what it is called with, in one way for each method.
//     HelperTool bus <address of the bus, or "starter": that of the bus that starts it> <name>
//     HelperTool peer <address to listen at>
// Prints "ready" when it can be called, and the name of each method that it does not answer.

#include <gio/gio.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

GVariant* nested(unsigned depth) {
    GVariant* value = g_variant_new_byte(7);
    for (unsigned level = 0; level < depth; ++level)
        value = g_variant_new_variant(value);
    return value;
}

/// Null: none for this method.
GVariant* answer(std::string_view method, GVariant* arguments) {
    if (method == "echo")
        return g_variant_ref(arguments);
    if (method == "typeOf")
        return g_variant_new("(s)", g_variant_get_type_string(arguments));
    if (method == "natural") {
        return g_variant_new_parsed("([<byte 1>, <int16 -2>, <uint32 3>, <uint64 4>, <['a', 'b']>,"
                                    " <objectpath '/o'>, <(1, 'x')>, <{'k': [true]}>,"
                                    " <uint64 18446744073709551615>],)");
    }
    if (method == "several")
        return g_variant_new("(ii)", 1, 2);
    if (method == "numberedKeys")
        return g_variant_new_parsed("({1: 'one'},)");
    if (method == "deep")
        return g_variant_new("(@v)", nested(33));
    return nullptr;
}

void reply(GDBusConnection* connection, GDBusMessage* call) {
    const std::string_view method = g_dbus_message_get_member(call);
    GDBusMessage* message = nullptr;
    if (method == "refuse") {
        message = g_dbus_message_new_method_error(call, "com.example.Error", "%s", "not\ntoday");
    } else {
        GVariant* const none = g_variant_new_tuple(nullptr, 0);
        GVariant* const body = g_dbus_message_get_body(call);
        GVariant* const value = answer(method, body != nullptr ? body : none);
        if (value == nullptr) {
            std::puts(method.data());
            std::fflush(stdout);
            return;
        }
        message = g_dbus_message_new_method_reply(call);
        g_dbus_message_set_body(message, value);
    }
    g_dbus_connection_send_message(connection, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                   nullptr);
}

GDBusMessage* filter(GDBusConnection* connection, GDBusMessage* message, gboolean isIncoming,
                     gpointer /*data*/) {
    if (isIncoming == FALSE ||
        g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
        return message;
    }
    reply(connection, message);
    g_object_unref(message);
    return nullptr;
}

void serveBus(const char* address, const char* name) {
    auto* const connection = g_dbus_connection_new_for_address_sync(
        address,
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    g_dbus_connection_set_exit_on_close(connection, TRUE);
    g_dbus_connection_add_filter(connection, filter, nullptr, nullptr);
    g_dbus_connection_call_sync(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                "org.freedesktop.DBus", "RequestName",
                                g_variant_new("(su)", name, 0), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
                                nullptr, nullptr);
}

void servePeers(const char* address) {
    char* const guid = g_dbus_generate_guid();
    auto* const server =
        g_dbus_server_new_sync(address, G_DBUS_SERVER_FLAGS_NONE, guid, nullptr, nullptr, nullptr);
    g_signal_connect(server, "new-connection",
                     G_CALLBACK(+[](GDBusServer* /*server*/, GDBusConnection* connection,
                                    gpointer /*data*/) -> gboolean {
                         g_dbus_connection_add_filter(connection, filter, nullptr, nullptr);
                         g_object_ref(connection);
                         return TRUE;
                     }),
                     nullptr);
    g_dbus_server_start(server);
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount == 4) {
        const bool isStarted = std::string_view(arguments[2]) == "starter";
        serveBus(isStarted ? std::getenv("DBUS_STARTER_ADDRESS") : arguments[2], arguments[3]);
    } else {
        servePeers(arguments[2]);
    }
    std::puts("ready");
    std::fflush(stdout);
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
