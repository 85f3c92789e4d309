#include "Tests/Support/Linux/DesktopSession.h"

#include "Tests/Support/WaitUntil.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace TestSupport {
namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); } // NOLINT(*-no-malloc, *-owning-memory)
};

/// The test's own connection to the X server.
class Client {
public:
    explicit Client(const std::string& display)
        : server_(xcb_connect(display.c_str(), nullptr)) {
        if (xcb_connection_has_error(server_.get()) != 0)
            throw std::runtime_error("no X server at " + display);
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(server_.get())).data;
    }

    xcb_connection_t* server() const { return server_.get(); }

    const xcb_screen_t& screen() const { return *screen_; }

    /// A window ID in a property of the root; 0 where it has none.
    xcb_window_t windowOfRoot(std::string_view property) const {
        const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(
            server(),
            xcb_intern_atom(server(), 0, static_cast<std::uint16_t>(property.size()),
                            property.data()),
            nullptr));
        const std::unique_ptr<xcb_get_property_reply_t, Free> reply(xcb_get_property_reply(
            server(),
            xcb_get_property(server(), 0, screen_->root, atom->atom, XCB_ATOM_WINDOW, 0, 1),
            nullptr));
        if (!reply || xcb_get_property_value_length(reply.get()) < 4)
            return XCB_WINDOW_NONE;
        return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
    }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* server) const { xcb_disconnect(server); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> server_;
    const xcb_screen_t* screen_ = nullptr; // the connection's
};

} // namespace

DesktopSession::DesktopSession()
    : server_(
          {"Xvfb", "-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp", "-noreset"})
    , display_(":" + server_.readLine()) {
    // While it starts it would manage a new window, but not bring it to the front.
    windowManager_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{"openbox", "--startup", "echo started"},
        std::vector<std::string>{"DISPLAY=" + display_, "HOME=" + folder_.path().string()});
    for (std::string line; line != "started";) {
        line = windowManager_->readLine();
        if (line.empty())
            throw std::runtime_error("the window manager did not start");
    }
}

bool DesktopSession::waitForActiveWindow() const {
    const Client client(display_);
    return waitUntil([&] { return client.windowOfRoot("_NET_ACTIVE_WINDOW") != XCB_WINDOW_NONE; });
}

class ForeignWindow::Impl {
public:
    Impl(const std::string& display, std::string_view instanceName, std::string_view className)
        : client_(display)
        , window_(xcb_generate_id(client_.server())) {
        auto* const server = client_.server();
        const auto& screen = client_.screen();
        xcb_create_window(server, XCB_COPY_FROM_PARENT, window_, screen.root, 0, 0, 200, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, 0, nullptr);
        auto names = std::string(instanceName).append(1, '\0').append(className).append(1, '\0');
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_CLASS,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(names.size()),
                            names.data());
        xcb_map_window(server, window_);
        xcb_flush(server);
        if (!waitUntil([&] { return client_.windowOfRoot("_NET_ACTIVE_WINDOW") == window_; }))
            throw std::runtime_error("the window did not come to the front");
    }

private:
    Client client_; // the server closes the window with it
    xcb_window_t window_;
};

ForeignWindow::ForeignWindow(const std::string& display, std::string_view instanceName,
                             std::string_view className)
    : impl_(std::make_shared<Impl>(display, instanceName, className)) {}

} // namespace TestSupport
