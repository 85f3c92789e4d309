#include "Tests/Support/Linux/NotificationService.h"

#include <gio/gio.h>

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

namespace TestSupport {
namespace {

constexpr auto path = "/org/freedesktop/Notifications";

constexpr auto description = R"(<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg direction="out" type="as"/></method>
  <method name="Notify">
    <arg direction="in" type="s"/><arg direction="in" type="u"/><arg direction="in" type="s"/>
    <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="in" type="as"/>
    <arg direction="in" type="a{sv}"/><arg direction="in" type="i"/>
    <arg direction="out" type="u"/>
  </method>
</interface></node>)";

struct Unref {
    void operator()(GDBusConnection* connection) const { g_object_unref(connection); }

    void operator()(GMainContext* context) const { g_main_context_unref(context); }

    void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }

    void operator()(GVariant* variant) const { g_variant_unref(variant); }

    void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }
};

template <class T>
using Reference = std::unique_ptr<T, Unref>;

std::vector<std::string> textsOf(GVariantIter* texts) {
    std::vector<std::string> list;
    for (const char* text = nullptr; g_variant_iter_next(texts, "&s", &text) != FALSE;)
        list.emplace_back(text);
    g_variant_iter_free(texts);
    return list;
}

std::map<std::string, std::string> hintsOf(GVariantIter* entries) {
    std::map<std::string, std::string> hints;
    const char* key = nullptr;
    GVariant* value = nullptr;
    while (g_variant_iter_next(entries, "{&sv}", &key, &value) != FALSE) {
        const Reference<GVariant> owned(value);
        char* const text = g_variant_print(value, FALSE);
        hints[key] = text;
        g_free(text);
    }
    g_variant_iter_free(entries);
    return hints;
}

NotifyCall callOf(GVariant* arguments) {
    NotifyCall call;
    const char *application = nullptr, *icon = nullptr, *summary = nullptr, *body = nullptr;
    GVariantIter *actions = nullptr, *hints = nullptr;
    g_variant_get(arguments, "(&su&s&s&sasa{sv}i)", &application, &call.replaces, &icon, &summary,
                  &body, &actions, &hints, &call.lifetime);
    call.applicationName = application;
    call.icon = icon;
    call.summary = summary;
    call.body = body;
    call.actions = textsOf(actions);
    call.hints = hintsOf(hints);
    return call;
}

} // namespace

/// What outlives each presence of the service on the bus.
class NotificationService::Recorder {
public:
    void setManner(Manner manner) {
        const std::lock_guard lock(mutex_);
        manner_ = manner;
    }

    void beginAnew() {
        const std::lock_guard lock(mutex_);
        lastNumber_ = 0;
        for (auto* invocation : std::exchange(held_, {}))
            g_object_unref(invocation);
    }

    void receive(GDBusMethodInvocation* invocation, NotifyCall call) {
        const std::lock_guard lock(mutex_);
        if (manner_ == Manner::answers)
            call.number = call.replaces != 0 ? call.replaces : ++lastNumber_;
        switch (manner_) {
        case Manner::answers:
            g_dbus_method_invocation_return_value(invocation, g_variant_new("(u)", call.number));
            break;
        case Manner::refuses:
            g_dbus_method_invocation_return_dbus_error(
                invocation, "org.freedesktop.Notifications.Error.Refused", "no more today");
            break;
        case Manner::holds:
            held_.push_back(invocation);
            break;
        }
        calls_.push_back(std::move(call));
        received_.notify_all();
    }

    void answerHeld() {
        const std::lock_guard lock(mutex_);
        for (auto* invocation : std::exchange(held_, {})) {
            g_dbus_method_invocation_return_value(invocation, g_variant_new("(u)", ++lastNumber_));
        }
    }

    std::optional<NotifyCall> next(std::chrono::milliseconds deadline) {
        std::unique_lock lock(mutex_);
        if (!received_.wait_for(lock, deadline, [this] { return !calls_.empty(); }))
            return std::nullopt;
        auto call = std::move(calls_.front());
        calls_.pop_front();
        return call;
    }

private:
    std::mutex mutex_;
    std::condition_variable received_;
    Manner manner_ = Manner::answers;
    std::deque<NotifyCall> calls_;
    std::vector<GDBusMethodInvocation*> held_;
    std::uint32_t lastNumber_ = 0;
};

/// One stay of the service on the bus: a connection, and the thread that serves it.
class NotificationService::Presence {
public:
    Presence(const std::string& address, const std::string& name,
             std::vector<std::string> capabilities, Recorder& recorder)
        : capabilities_(std::move(capabilities))
        , recorder_(recorder)
        , context_(g_main_context_new())
        , loop_(g_main_loop_new(context_.get(), FALSE)) {
        std::promise<bool> started;
        auto isThere = started.get_future();
        thread_ = std::thread([this, &address, &name, &started] {
            g_main_context_push_thread_default(context_.get());
            started.set_value(appear(address, name));
            g_main_loop_run(loop_.get());
            g_main_context_pop_thread_default(context_.get());
        });
        if (!isThere.get()) {
            end();
            throw std::runtime_error("the notification service cannot get on the bus");
        }
    }

    ~Presence() { end(); }

    Presence(const Presence&) = delete;
    Presence& operator=(const Presence&) = delete;
    Presence(Presence&&) = delete;
    Presence& operator=(Presence&&) = delete;

    void emit(const char* signal, GVariant* arguments) {
        g_dbus_connection_emit_signal(connection_.get(), nullptr, path,
                                      NotificationService::standardName, signal, arguments,
                                      nullptr);
        g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
    }

private:
    bool appear(const std::string& address, const std::string& name) {
        connection_.reset(g_dbus_connection_new_for_address_sync(
            address.c_str(),
            // NOLINTBEGIN(clang-analyzer-optin.core.EnumCastOutOfRange): a set of flags
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr));
        // NOLINTEND(clang-analyzer-optin.core.EnumCastOutOfRange)
        if (!connection_)
            return false;
        static constexpr GDBusInterfaceVTable table{
            .method_call = serve, .get_property = nullptr, .set_property = nullptr, .padding = {}};
        const Reference<GDBusNodeInfo> info(g_dbus_node_info_new_for_xml(description, nullptr));
        g_dbus_connection_register_object(connection_.get(), path, info->interfaces[0], &table,
                                          this, nullptr, nullptr);
        const guint32 standInLine = 0;
        const Reference<GVariant> reply(g_dbus_connection_call_sync(
            connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
            "org.freedesktop.DBus", "RequestName", g_variant_new("(su)", name.c_str(), standInLine),
            nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        return reply != nullptr;
    }

    static void serve(GDBusConnection* /*connection*/, const char* /*sender*/,
                      const char* /*objectPath*/, const char* /*interface*/, const char* method,
                      GVariant* arguments, GDBusMethodInvocation* invocation, gpointer data) {
        auto* self = static_cast<Presence*>(data);
        if (std::string_view(method) == "Notify") {
            self->recorder_.receive(invocation, callOf(arguments));
            return;
        }
        GVariantBuilder list;
        g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
        for (const auto& capability : self->capabilities_)
            g_variant_builder_add(&list, "s", capability.c_str());
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(as)", &list));
    }

    void end() {
        if (connection_) {
            // What was answered is answered.
            g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
            g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
        }
        g_main_loop_quit(loop_.get());
        if (thread_.joinable())
            thread_.join();
        connection_.reset();
    }

    const std::vector<std::string> capabilities_;
    Recorder& recorder_;
    Reference<GMainContext> context_;
    Reference<GMainLoop> loop_;
    Reference<GDBusConnection> connection_;
    std::thread thread_;
};

NotificationService::NotificationService(std::string busAddress,
                                         std::vector<std::string> capabilities, std::string name)
    : busAddress_(std::move(busAddress))
    , name_(std::move(name))
    , recorder_(std::make_unique<Recorder>()) {
    comeBack(std::move(capabilities));
}

NotificationService::~NotificationService() {
    vanish();
}

std::optional<NotifyCall> NotificationService::next(std::chrono::milliseconds deadline) {
    return recorder_->next(deadline);
}

void NotificationService::setManner(Manner manner) {
    recorder_->setManner(manner);
}

void NotificationService::answerHeld() {
    recorder_->answerHeld();
}

void NotificationService::emitActionInvoked(std::uint32_t number, const std::string& actionKey) {
    presence_->emit("ActionInvoked", g_variant_new("(us)", number, actionKey.c_str()));
}

void NotificationService::emitActivationToken(std::uint32_t number, const std::string& token) {
    presence_->emit("ActivationToken", g_variant_new("(us)", number, token.c_str()));
}

void NotificationService::emitNotificationClosed(std::uint32_t number, std::uint32_t reason) {
    presence_->emit("NotificationClosed", g_variant_new("(uu)", number, reason));
}

void NotificationService::vanish() {
    presence_.reset();
    recorder_->beginAnew();
}

void NotificationService::comeBack(std::vector<std::string> capabilities) {
    presence_ = std::make_unique<Presence>(busAddress_, name_, std::move(capabilities), *recorder_);
}

} // namespace TestSupport
