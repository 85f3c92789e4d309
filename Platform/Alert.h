#pragma once

#include <cstdint>
#include <string>

namespace Platform {

/// A message that the user has to dismiss, with one button. All texts are the caller's, in the
/// user's language; empty ones are left out.
/// A plain value.
struct Alert {
    /// How grave it is.
    enum class Style : std::uint8_t { warning, informational, critical };

    std::string messageText;      ///< what happened
    std::string informativeText;  ///< why, or what to do about it
    std::string buttonTitle;      ///< empty: the system's own ("OK")
    Style style = Style::warning; ///< how grave it is
};

/// Shows the alert and returns when the user has dismissed it. Callable on any thread; on another
/// than the main one it waits for the main thread, which must not wait for the caller then.
///
/// A process that has no windows to show it in writes it to standard error, as one line, and does
/// not wait.
void runModal(const Alert& alert);

} // namespace Platform
