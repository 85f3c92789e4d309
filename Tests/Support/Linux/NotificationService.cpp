#include "Tests/Support/Linux/NotificationService.h"

#include "Tests/Support/Linux/BusService.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string_view>
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
        const BusReference<GVariant> owned(value);
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

/// One stay of the service on the bus.
class NotificationService::Presence {
public:
    Presence(const std::string& address, const std::string& name,
             std::vector<std::string> capabilities, Recorder& recorder)
        : capabilities_(std::move(capabilities))
        , recorder_(recorder)
        , service_(address, name,
                   {.path = path,
                    .interface = NotificationService::standardName,
                    .description = description},
                   [this](GDBusMethodInvocation* call) { serve(call); }) {}

    void emit(const char* signal, GVariant* arguments) { service_.emit(signal, arguments); }

private:
    void serve(GDBusMethodInvocation* call) {
        if (std::string_view(g_dbus_method_invocation_get_method_name(call)) == "Notify") {
            recorder_.receive(call, callOf(g_dbus_method_invocation_get_parameters(call)));
            return;
        }
        GVariantBuilder list;
        g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
        for (const auto& capability : capabilities_)
            g_variant_builder_add(&list, "s", capability.c_str());
        g_dbus_method_invocation_return_value(call, g_variant_new("(as)", &list));
    }

    const std::vector<std::string> capabilities_;
    Recorder& recorder_;
    BusService service_; // last: it is serving from its start on
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
