#include "Platform/Linux/Notifications/NotificationAnswers.h"

#include "Platform/Linux/Desktop/ActivationToken.h"
#include "Platform/Linux/Notifications/NotificationMessage.h"

#include <algorithm>
#include <utility>

namespace Platform {
namespace {

// The signals of all who use the service come here.
constexpr std::size_t mostEarly = 32;
constexpr std::size_t longestEarly = 1024; // bytes of text

std::uint32_t numberOf(const BusSignal& signal) {
    return static_cast<std::uint32_t>(*signal.values[0].get<std::int64_t>());
}

} // namespace

NotificationAnswers::NotificationAnswers(Handler handler)
    : handler_(std::move(handler)) {}

void NotificationAnswers::receive(const BusSignal& signal) {
    if (signal.type != "us" && signal.type != "uu")
        return;
    if (unnumbered_ == 0 || delivered_.find(numberOf(signal)) != nullptr) {
        take(signal);
    } else if (signal.type == "uu" || signal.values[1].get<std::string>()->size() <= longestEarly) {
        early_.push_back(signal);
        if (early_.size() > mostEarly)
            early_.pop_front();
    }
}

void NotificationAnswers::end(std::optional<std::uint32_t> number, NotificationRequest request) {
    if (number)
        delivered_.record(*number, std::move(request));
    unnumbered_ -= std::min<std::size_t>(unnumbered_, 1); // 0: of an earlier life of the owner
    for (const auto& signal : std::exchange(early_, {}))  // those of others' wait on
        receive(signal);
}

void NotificationAnswers::take(const BusSignal& signal) {
    const auto number = numberOf(signal);
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
    unnumbered_ = 0;
    early_.clear();
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
