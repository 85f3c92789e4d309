#pragma once

#include "Platform/Linux/Bus/BusMessage.h"
#include "Platform/UserNotificationCenter.h"

#include <cstdint>
#include <vector>

namespace Platform {

/// What a notification service can do, as far as it makes a difference here.
struct NotificationCapabilities {
    bool actions = false;
    bool bodyMarkup = false;

    /// From the answer of GetCapabilities, "(as)".
    static NotificationCapabilities read(const PropertyList::Array& answer);
};

/// The arguments of Notify (freedesktop Desktop Notifications 1.2) that show the request in place
/// of the notification with the number `replaced`, 0 for none. Text that is not UTF-8 goes with
/// U+FFFD for what is wrong with it.
BusArguments makeNotifyArguments(const NotificationRequest& request,
                                 const std::vector<NotificationAction>& actions,
                                 const NotificationCapabilities& capabilities,
                                 std::uint32_t replaced);

/// The key of the action that a click on the notification's body stands for.
inline constexpr auto defaultActionKey = "default";

} // namespace Platform
