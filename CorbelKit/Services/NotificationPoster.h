#pragma once

#include <optional>
#include <string>

namespace CorbelKit {

struct PostedNotification {
    std::string title;
    std::string body;
    std::string identifier; ///< a later notification of the same identifier replaces this one
    std::string category;
    std::optional<std::string> subtitle;
};

/// Has the user-notification centre deliver the notification after 0.3 seconds, if the user lets it
/// show alerts; otherwise nothing happens. A refusal by the centre is one line on standard output.
/// Texts are shown as `printableText`. Callable on any thread; returns at once.
void postNotification(const PostedNotification& notification);

} // namespace CorbelKit
