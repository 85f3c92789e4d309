#include "Platform/Linux/Notifications/NotificationAnswers.h"

#include "Platform/Linux/Desktop/ActivationToken.h"
#include "Platform/Linux/Notifications/NotificationMessage.h"

#include <utility>

namespace Platform {

NotificationAnswers::NotificationAnswers(Handler handler)
    : handler_(std::move(handler)) {}

void NotificationAnswers::receive(const BusSignal& signal) {
    if (signal.type != "us" && signal.type != "uu")
        return;
    const auto number = static_cast<std::uint32_t>(*signal.values[0].get<std::int64_t>());
    if (signal.type == "uu") {
        if (signal.name == "NotificationClosed")
            delivered_.close(number);
        return;
    }
    const auto& text = *signal.values[1].get<std::string>();
    if (signal.name == "ActionInvoked")
        answer(number, text);
    if (signal.name == "ActivationToken")
        activationOffer_ = {.notification = number, .token = text};
}

void NotificationAnswers::clear() {
    delivered_.clear();
    activationOffer_.reset();
}

void NotificationAnswers::answer(std::uint32_t number, const std::string& actionKey) {
    const auto* request = delivered_.find(number);
    if (request == nullptr)
        return;
    const auto offer = std::exchange(activationOffer_, std::nullopt);
    setActivationToken(offer && offer->notification == number ? offer->token : std::string());
    const bool isDefault = actionKey == defaultActionKey;
    handler_({.actionIdentifier = isDefault
                                      ? std::string(NotificationResponse::defaultActionIdentifier)
                                      : actionKey,
              .request = *request});
}

} // namespace Platform
