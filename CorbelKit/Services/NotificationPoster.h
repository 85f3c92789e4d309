#pragma once

#include <optional>
#include <string>

namespace CorbelKit {

/// What the user is to read, in the user's language. A plain value.
struct PostedNotification {
    std::string title;      ///< the first line
    std::string body;       ///< what happened
    std::string identifier; ///< a later notification of the same identifier replaces this one
    std::string category;   ///< which buttons it has: see `Const::NotificationCategory`
    std::optional<std::string> subtitle; ///< absent: none
};

/// Has the user-notification centre deliver the notification after 0.3 seconds, if the user lets it
/// show alerts; otherwise nothing happens. A refusal by the centre is one line on standard output.
/// Texts are shown as `printableText`. Callable on any thread; returns at once.
void postNotification(const PostedNotification& notification);

} // namespace CorbelKit
