#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace Platform {

/// A message that the user has to dismiss, with one button. All texts are the caller's, in the
/// user's language; empty ones are left out. What is not UTF-8 shows as U+FFFD, and of a text that
/// is longer than a screen is tall (1,000 characters, a line end counts for 40) the beginning.
/// A plain value.
struct Alert {
    /// How grave it is.
    enum class Style : std::uint8_t { warning, informational, critical };

    std::string messageText;      ///< what happened
    std::string informativeText;  ///< why, or what to do about it
    std::string buttonTitle;      ///< empty: the system's own ("OK")
    Style style = Style::warning; ///< how grave it is

    /// All of it.
    bool operator==(const Alert&) const = default;
};

/// Shows the alert and returns when the user has dismissed it. Callable on any thread; on another
/// than the main one it waits for the main thread, which must not wait for the caller then.
///
/// Alerts come one at a time, in the order in which they were asked for. One that is up or waits
/// already is not shown once more: who asks for it again waits for the same dismissal. On the main
/// thread, which is busy with the alert that is up, another one comes in front of that, and the
/// same one returns at once; in a task of the main queue it may hold up those that follow, as
/// `showAlert` never does.
///
/// A process that has no windows to show it in, or that has been asked to end, writes it to
/// standard error, as one line, and does not wait. Being asked to end dismisses those that are up.
void runModal(const Alert& alert);

/// The same, but returns at once, and on the main thread as well the alert waits until those
/// before it are dismissed. `dismissed` then runs on the main thread; an empty one is not called.
void showAlert(const Alert& alert, std::function<void()> dismissed = {});

/// Runs the task when no alert is up or waits: at once, or after the last is dismissed; never,
/// where the process ends first. For windows, which nobody could use below an alert. Main thread.
void whenNoAlertIsUp(std::function<void()> task);

} // namespace Platform
