#include "Platform/Linux/Notifications/DeliveredNotifications.h"

#include <algorithm>
#include <utility>

namespace Platform {

void DeliveredNotifications::record(std::uint32_t number, NotificationRequest request) {
    std::erase_if(entries_, [number](const Entry& entry) { return entry.number == number; });
    for (auto& entry : entries_) {
        if (entry.request.identifier == request.identifier)
            entry.isShown = false;
    }
    entries_.push_back({.number = number, .isShown = true, .request = std::move(request)});
    if (entries_.size() > capacity)
        entries_.pop_front();
}

std::uint32_t DeliveredNotifications::numberShowing(std::string_view identifier) const {
    const auto found = std::ranges::find_if(entries_, [identifier](const Entry& entry) {
        return entry.isShown && entry.request.identifier == identifier;
    });
    return found != entries_.end() ? found->number : 0;
}

void DeliveredNotifications::close(std::uint32_t number) {
    const auto found = std::ranges::find(entries_, number, &Entry::number);
    if (found != entries_.end())
        found->isShown = false;
}

const NotificationRequest* DeliveredNotifications::find(std::uint32_t number) const {
    const auto found = std::ranges::find(entries_, number, &Entry::number);
    return found != entries_.end() ? &found->request : nullptr;
}

} // namespace Platform
