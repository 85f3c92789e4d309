#include "Platform/ObserverList.h"

#include <utility>

namespace Platform {

Observation ObserverList::add(Handler handler) {
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    auto observer = std::make_shared<const Handler>(std::move(handler));
    observers_.push_back(observer);
    return Observation(std::move(observer));
}

void ObserverList::notify() const {
    const auto present = observers_;
    for (const auto& observer : present) {
        if (const auto handler = observer.lock())
            (*handler)();
    }
}

} // namespace Platform
