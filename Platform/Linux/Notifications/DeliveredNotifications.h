#pragma once

#include "Platform/UserNotificationCenter.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>

namespace Platform {

/// What one notification service has taken: what it shows, so that a later request can replace it,
/// and what it has closed, because its answer may still come. Bounded: the oldest are forgotten.
class DeliveredNotifications {
public:
    static constexpr std::size_t capacity = 512;

    /// The service's number for what it was given; in place of whatever had that number, or was
    /// shown for that request's identifier.
    void record(std::uint32_t number, NotificationRequest request);

    /// The number under which a request of the identifier is shown; 0 where none is.
    std::uint32_t numberShowing(std::string_view identifier) const;

    /// No longer shown; from now on its number replaces nothing.
    void close(std::uint32_t number);

    /// Null where the number is none of ours.
    const NotificationRequest* find(std::uint32_t number) const;

    void clear() { entries_.clear(); }

private:
    struct Entry {
        std::uint32_t number;
        bool isShown;
        NotificationRequest request;
    };

    std::deque<Entry> entries_; // oldest first
};

} // namespace Platform
