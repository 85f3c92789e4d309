#include "CorbelKit/Services/NotificationCenter.h"

#include "Platform/MainThread.h"
#include "Platform/NeverDestroyed.h"
#include "Platform/SystemObservers.h"

#include <utility>

namespace CorbelKit {

NotificationCenter& NotificationCenter::defaultCenter() {
    static const Platform::NeverDestroyed<NotificationCenter> center;
    return center.get();
}

Platform::Observation NotificationCenter::addObserver(std::string_view name, Handler handler) {
    Platform::MainThread::check();
    return observers_[std::string(name)].add(std::move(handler));
}

void NotificationCenter::post(std::string_view name) const {
    Platform::MainThread::check();
    if (const auto found = observers_.find(name); found != observers_.end())
        found->second.notify();
    if (this == &defaultCenter())
        Platform::postToSystemObservers(name);
}

} // namespace CorbelKit
