#include "Platform/Native/ObservedSetting.h"

#include <utility>

namespace Platform {

ObservedSetting::ObservedSetting(std::string keyPath, UserDefaults::Handler handler, Value present)
    : keyPath_(std::move(keyPath))
    , handler_(std::move(handler))
    , told_(std::move(present)) {}

void ObservedSetting::tell(Value value) {
    if (value == told_)
        return;
    told_ = std::move(value);
    const std::lock_guard lock(mutex_);
    if (!isSilent_)
        handler_(keyPath_, told_);
}

void ObservedSetting::silence() {
    const std::lock_guard lock(mutex_);
    isSilent_ = true;
}

} // namespace Platform
