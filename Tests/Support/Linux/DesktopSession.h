#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <sys/types.h>

#include <memory>
#include <string>
#include <string_view>

namespace TestSupport {

/// An X server without a screen and a window manager on it, ended with the object.
class DesktopSession {
public:
    /// Throws where there is no X server or window manager to start.
    DesktopSession();
    ~DesktopSession();
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;
    DesktopSession(DesktopSession&&) = delete;
    DesktopSession& operator=(DesktopSession&&) = delete;

    /// For the environment variable DISPLAY.
    const std::string& display() const { return display_; }

    /// Has the X server stand still, and go on.
    void freeze() const;
    void thaw() const;

    /// Ends the X server as if it had crashed.
    void crash();

private:
    TemporaryFolder folder_;
    std::string display_;
    pid_t server_ = -1;
    pid_t windowManager_ = -1;
};

/// A window of a foreign application, closed with the object.
class ForeignWindow {
public:
    /// Returns when the window is in front; throws when it does not come to that.
    ForeignWindow(const std::string& display, std::string_view instanceName,
                  std::string_view className);
    ~ForeignWindow();
    ForeignWindow(const ForeignWindow&) = delete;
    ForeignWindow& operator=(const ForeignWindow&) = delete;
    ForeignWindow(ForeignWindow&&) = delete;
    ForeignWindow& operator=(ForeignWindow&&) = delete;

private:
    class Impl;

    std::unique_ptr<Impl> impl_;
};

} // namespace TestSupport
