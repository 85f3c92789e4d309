#include "Tests/Support/Linux/DesktopSession.h"

#include "Tests/Support/WaitUntil.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <utility>
#include <vector>

namespace TestSupport {
namespace {

constexpr int displayDescriptor = 3;

pid_t spawn(std::vector<std::string> words, std::vector<std::string> environment,
            int inherited = -1) {
    const auto pointers = [](std::vector<std::string>& texts) {
        std::vector<char*> list;
        for (auto& text : texts)
            list.push_back(text.data());
        list.push_back(nullptr);
        return list;
    };
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0);
    if (inherited != -1)
        posix_spawn_file_actions_adddup2(&actions, inherited, displayDescriptor);
    pid_t process = -1;
    const int failure = posix_spawnp(&process, words.front().c_str(), &actions, nullptr,
                                     pointers(words).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0)
        throw std::runtime_error("cannot start " + words.front());
    return process;
}

void end(pid_t& process, int signal) {
    if (process == -1)
        return;
    kill(process, signal);
    waitpid(std::exchange(process, -1), nullptr, 0);
}

/// What the X server writes once it listens.
std::string readDisplay(int descriptor) {
    std::string text;
    std::array<char, 16> buffer{};
    while (!text.ends_with('\n')) {
        const auto count = read(descriptor, buffer.data(), buffer.size());
        if (count <= 0)
            throw std::runtime_error("the X server did not start");
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return ":" + text.substr(0, text.size() - 1);
}

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

DesktopSession::DesktopSession() {
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    server_ = spawn({"Xvfb", "-displayfd", std::to_string(displayDescriptor), "-screen", "0",
                     "640x480x24", "-nolisten", "tcp", "-noreset"},
                    {"PATH=/usr/bin:/bin"}, pipe[1]);
    close(pipe[1]);
    display_ = readDisplay(pipe[0]);
    close(pipe[0]);
    windowManager_ = spawn({"openbox"}, {"PATH=/usr/bin:/bin", "DISPLAY=" + display_,
                                         "HOME=" + folder_.path().string()});
    const Client client(display_);
    if (!waitUntil([&] { return client.windowOfRoot("_NET_SUPPORTING_WM_CHECK") != 0; }))
        throw std::runtime_error("the window manager did not start");
}

DesktopSession::~DesktopSession() {
    end(windowManager_, SIGKILL);
    end(server_, SIGKILL);
}

void DesktopSession::freeze() const {
    kill(server_, SIGSTOP);
}

void DesktopSession::thaw() const {
    kill(server_, SIGCONT);
}

void DesktopSession::crash() {
    end(server_, SIGKILL);
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
    : impl_(std::make_unique<Impl>(display, instanceName, className)) {}

ForeignWindow::~ForeignWindow() = default;

} // namespace TestSupport
