#pragma once

#include "Tests/Support/Linux/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <memory>

namespace TestSupport {

/// An X server without a screen and a window manager on it, ended with the object.
class DesktopSession {
public:
    /// Throws where there is no X server or window manager to start.
    DesktopSession();

    /// For the environment variable DISPLAY.
    const std::string& display() const { return display_; }

    /// Until some window is in front; false when none came to it.
    bool waitForActiveWindow() const;

    /// Has the X server stand still, and go on.
    void freeze() const { server_.send(SIGSTOP); }

    void thaw() const { server_.send(SIGCONT); }

    /// Ends the X server as if it had crashed.
    void crash() { server_.end(); }

private:
    TemporaryFolder folder_;
    ChildProcess server_;
    std::string display_;
    std::unique_ptr<ChildProcess> windowManager_;
};

/// A window of a foreign application, closed with the object.
class ForeignWindow {
public:
    /// Returns when the window is in front; throws when it does not come to that.
    ForeignWindow(const std::string& display, const std::string& instanceName,
                  const std::string& className);

private:
    ChildProcess application_;
};

} // namespace TestSupport
