#include "Platform/ObserverList.h"

#include <algorithm>
#include <utility>

namespace Platform {

Observation ObserverList::add(Handler handler) {
    constexpr std::size_t few = 16;
    if (observers_.size() >= std::max(few, 2 * living_)) { // else each would look at all others
        std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
        living_ = observers_.size();
    }
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
