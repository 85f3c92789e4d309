#include "Tests/Support/Linux/DesktopSession.h"

#include "Tests/Support/WaitUntil.h"

#include <stdexcept>
#include <vector>

namespace TestSupport {
namespace {

/// What is known of windows: lines of window numbers; none where there is no such window.
std::string windows(const std::string& display, std::vector<std::string> question) {
    question.insert(question.begin(), "xdotool");
    return ChildProcess(std::move(question), {"DISPLAY=" + display}).readAll();
}

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
    return waitUntil([this] { return !windows(display_, {"getactivewindow"}).empty(); });
}

ForeignWindow::ForeignWindow(const std::string& display, const std::string& instanceName,
                             const std::string& className)
    : application_({"zenity", "--info", "--name=" + instanceName, "--class=" + className},
                   {"DISPLAY=" + display, "DBUS_SESSION_BUS_ADDRESS=unix:path=/none"}) {
    const auto isInFront = [&] {
        const auto active = windows(display, {"getactivewindow"});
        const auto own = windows(display, {"search", "--onlyvisible", "--class", className});
        return !active.empty() && own.find(active) != std::string::npos;
    };
    if (!waitUntil(isInFront))
        throw std::runtime_error("the window did not come to the front");
}

} // namespace TestSupport
