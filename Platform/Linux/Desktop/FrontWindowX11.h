#pragma once

#include "Platform/Linux/Desktop/FrontWindow.h"

#include <memory>
#include <optional>

namespace Platform {

/// The X server of the session, as its window manager keeps it informed (Extended Window Manager
/// Hints 1.5). The connection is made with the first question and kept; it asks for no events, so
/// it never wakes the process. For one thread at a time; questions wait for the server.
class X11Session {
public:
    X11Session();
    ~X11Session();
    X11Session(const X11Session&) = delete;
    X11Session& operator=(const X11Session&) = delete;
    X11Session(X11Session&&) = delete;
    X11Session& operator=(X11Session&&) = delete;

    /// Absent when no window is active or the server is lost; the next question looks for it anew.
    std::optional<FrontWindow> activeWindow();

private:
    class Connection;

    std::unique_ptr<Connection> connection_;
};

} // namespace Platform
