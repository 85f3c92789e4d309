#pragma once

#include "Platform/Linux/Bus/BusMessage.h"
#include "Platform/Linux/Notifications/DeliveredNotifications.h"
#include "Platform/UserNotificationCenter.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>

namespace Platform {

/// What becomes of notifications after one service has shown them: the user answers, or closes
/// them. For one serial queue.
class NotificationAnswers {
public:
    using Handler = std::function<void(const NotificationResponse& response)>;

    explicit NotificationAnswers(Handler handler);

    /// What the service has taken; its numbers mean nothing to the next one.
    const DeliveredNotifications& delivered() const { return delivered_; }

    /// The service is about to be given a notification: an answer may come before its number.
    void begin() { ++unnumbered_; }

    /// It has given the notification a number, or none.
    void end(std::optional<std::uint32_t> number, NotificationRequest request);

    /// Takes a signal of the service.
    void receive(const BusSignal& signal);

    /// The service has gone.
    void clear();

private:
    struct ActivationOffer {
        std::uint32_t notification;
        std::string token;
    };

    void take(const BusSignal& signal);
    void answer(std::uint32_t number, const std::string& actionKey);

    const Handler handler_;
    DeliveredNotifications delivered_;
    std::size_t unnumbered_ = 0;
    std::deque<BusSignal> early_; // of numbers that are nobody's so far; the latest few
    std::optional<ActivationOffer> activationOffer_; // comes before the answer that it is for
};

} // namespace Platform
