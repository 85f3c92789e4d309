#include "Tests/Support/Linux/LoginManager.h"

#include "Tests/Support/Linux/BusService.h"

#include <fcntl.h>
#include <gio/gunixfdlist.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

namespace TestSupport {
namespace {

constexpr auto description = R"(<node><interface name="org.freedesktop.login1.Manager">
  <method name="Inhibit">
    <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="in" type="s"/>
    <arg direction="in" type="s"/><arg direction="out" type="h"/>
  </method>
</interface></node>)";

InhibitCall callOf(GDBusMethodInvocation* call) {
    const char *what = nullptr, *who = nullptr, *why = nullptr, *mode = nullptr;
    g_variant_get(g_dbus_method_invocation_get_parameters(call), "(&s&s&s&s)", &what, &who, &why,
                  &mode);
    return {.what = what, .who = who, .why = why, .mode = mode};
}

bool hasWriter(int pipe) {
    pollfd query{.fd = pipe, .events = 0, .revents = 0};
    return poll(&query, 1, 0) == 0;
}

} // namespace

class LoginManager::Impl {
public:
    explicit Impl(const std::string& busAddress)
        : service_(std::make_unique<BusService>(
              busAddress, "org.freedesktop.login1",
              BusService::Object{.path = "/org/freedesktop/login1",
                                 .interface = "org.freedesktop.login1.Manager",
                                 .description = description},
              [this](GDBusMethodInvocation* call) { receive(call); })) {}

    ~Impl() {
        service_.reset();
        for (auto* call : held_)
            g_object_unref(call);
        for (const int pipe : granted_)
            close(pipe);
    }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    std::optional<InhibitCall> next(std::chrono::milliseconds deadline) {
        std::unique_lock lock(mutex_);
        if (!received_.wait_for(lock, deadline, [this] { return !calls_.empty(); }))
            return std::nullopt;
        auto call = std::move(calls_.front());
        calls_.pop_front();
        return call;
    }

    std::size_t inhibitorsOpen() {
        const std::lock_guard lock(mutex_);
        std::erase_if(granted_, [](int pipe) { return !hasWriter(pipe) && close(pipe) == 0; });
        return granted_.size();
    }

    void setManner(Manner manner) {
        const std::lock_guard lock(mutex_);
        manner_ = manner;
    }

    void grantHeld() {
        const std::lock_guard lock(mutex_);
        for (auto* call : std::exchange(held_, {}))
            grant(call);
    }

private:
    void receive(GDBusMethodInvocation* call) {
        const std::lock_guard lock(mutex_);
        calls_.push_back(callOf(call));
        switch (manner_) {
        case Manner::grants:
            grant(call);
            break;
        case Manner::refuses:
            g_dbus_method_invocation_return_dbus_error(
                call, "org.freedesktop.DBus.Error.AccessDenied", "not today");
            break;
        case Manner::holds:
            held_.push_back(call);
            break;
        }
        received_.notify_all();
    }

    void grant(GDBusMethodInvocation* call) {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            g_dbus_method_invocation_return_dbus_error(call, "org.freedesktop.DBus.Error.Failed",
                                                       "no pipe");
            return;
        }
        granted_.push_back(ends[0]);
        const BusReference<GUnixFDList> files(g_unix_fd_list_new_from_array(&ends[1], 1));
        g_dbus_method_invocation_return_value_with_unix_fd_list(call, g_variant_new("(h)", 0),
                                                                files.get());
    }

    std::mutex mutex_;
    std::condition_variable received_;
    Manner manner_ = Manner::grants;           // mutex_
    std::deque<InhibitCall> calls_;            // mutex_
    std::vector<GDBusMethodInvocation*> held_; // mutex_
    std::vector<int> granted_;                 // mutex_: the ends to read from
    std::unique_ptr<BusService> service_;      // last: it is serving from its start on
};

LoginManager::LoginManager(const std::string& busAddress)
    : impl_(std::make_unique<Impl>(busAddress)) {}

LoginManager::~LoginManager() = default;

std::optional<InhibitCall> LoginManager::next(std::chrono::milliseconds deadline) {
    return impl_->next(deadline);
}

std::size_t LoginManager::inhibitorsOpen() {
    return impl_->inhibitorsOpen();
}

void LoginManager::setManner(Manner manner) {
    impl_->setManner(manner);
}

void LoginManager::grantHeld() {
    impl_->grantHeld();
}

} // namespace TestSupport
