#include "Platform/Linux/Desktop/FrontWindowX11.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace Platform {
namespace {

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

struct Free {
    void operator()(void* reply) const { std::free(reply); } // NOLINT(*-no-malloc, *-owning-memory)
};

template <class T>
using Reply = std::unique_ptr<T, Free>;

std::string_view firstString(std::string_view strings) {
    return strings.substr(0, strings.find('\0'));
}

bool isThisMachine(std::string_view name) {
    std::array<char, 256> ownName{};
    return name.empty() || (gethostname(ownName.data(), ownName.size() - 1) == 0 &&
                            name == std::string_view(ownName.data()));
}

} // namespace

class X11Session::Connection {
public:
    /// Null when there is no server, or it does not let us in.
    static std::unique_ptr<Connection> make() {
        auto connection = std::make_unique<Connection>();
        return connection->prepare() ? std::move(connection) : nullptr;
    }

    bool isLost() const { return xcb_connection_has_error(server_.get()) != 0; }

    std::optional<FrontWindow> activeWindow() const {
        const auto window = number(root_, activeWindowAtom_, XCB_ATOM_WINDOW);
        if (window == XCB_WINDOW_NONE)
            return std::nullopt;
        const auto names = property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
        const auto instanceName = firstString(names);
        const auto rest = std::string_view(names).substr(instanceName.size());
        if (rest.empty())
            return std::nullopt;
        return FrontWindow{.instanceName = std::string(instanceName),
                           .className = std::string(firstString(rest.substr(1))),
                           .process = processOf(window)};
    }

    // Every client is notified of new keyboards, whether it asked or not.
    void dropEvents() const {
        while (Reply<xcb_generic_event_t>(xcb_poll_for_event(server_.get()))) {
        }
    }

private:
    static constexpr std::uint32_t longestPropertyInWords = 1024;

    bool prepare() {
        if (isLost())
            return false;
        auto screens = xcb_setup_roots_iterator(xcb_get_setup(server_.get()));
        for (int screen = 0; screen < screenNumber_ && screens.rem > 1; ++screen)
            xcb_screen_next(&screens);
        if (screens.rem == 0)
            return false;
        root_ = screens.data->root;
        activeWindowAtom_ = atom("_NET_ACTIVE_WINDOW");
        processAtom_ = atom("_NET_WM_PID");
        return !isLost();
    }

    xcb_atom_t atom(std::string_view name) const {
        const auto request =
            xcb_intern_atom(server_.get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
        const Reply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(server_.get(), request, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    std::string property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const {
        const auto request =
            xcb_get_property(server_.get(), 0, window, name, type, 0, longestPropertyInWords);
        const Reply<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(server_.get(), request, nullptr));
        if (!reply)
            return {};
        return {static_cast<const char*>(xcb_get_property_value(reply.get())),
                static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
    }

    std::uint32_t number(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const {
        const auto bytes = property(window, name, type);
        std::uint32_t value = 0;
        if (bytes.size() >= sizeof value)
            std::memcpy(&value, bytes.data(), sizeof value);
        return value;
    }

    pid_t processOf(xcb_window_t window) const {
        if (!isThisMachine(property(window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING)))
            return 0;
        return static_cast<pid_t>(number(window, processAtom_, XCB_ATOM_CARDINAL));
    }

    int screenNumber_ = 0;
    // Never null: where connecting fails, it is a connection with an error.
    std::unique_ptr<xcb_connection_t, Disconnect> server_{xcb_connect(nullptr, &screenNumber_)};
    xcb_window_t root_ = XCB_WINDOW_NONE;
    xcb_atom_t activeWindowAtom_ = XCB_ATOM_NONE;
    xcb_atom_t processAtom_ = XCB_ATOM_NONE;
};

X11Session::X11Session() = default;

X11Session::~X11Session() = default;

std::optional<FrontWindow> X11Session::activeWindow() {
    if (!connection_)
        connection_ = Connection::make();
    if (!connection_)
        return std::nullopt;
    auto window = connection_->activeWindow();
    connection_->dropEvents();
    if (!connection_->isLost())
        return window;
    connection_.reset();
    return std::nullopt;
}

} // namespace Platform
