#include "Platform/Native/ObservedSettings.h"

#include "Platform/NeverDestroyed.h"

#include <cstddef>
#include <utility>

namespace Platform {

ObservedSetting::ObservedSetting(std::unique_ptr<NativeSetting> native, std::string keyPath,
                                 UserDefaults::Handler handler)
    : native_(std::move(native))
    , keyPath_(std::move(keyPath))
    , handler_(std::move(handler))
    , known_(std::move(NativeSetting::values({native_.get()}).front())) {}

void ObservedSetting::notify(Value value) {
    if (value == known_)
        return;
    known_ = std::move(value);
    const MutexLock lock(calling_);
    if (isSilent_)
        return;
    caller_ = std::this_thread::get_id();
    handler_(keyPath_, known_);
    caller_ = std::thread::id();
}

void ObservedSetting::silence() {
    isSilent_ = true;
    if (caller_ != std::this_thread::get_id())
        const MutexLock untilItHasReturned(calling_);
}

ObservedSettings& ObservedSettings::shared() {
    static const NeverDestroyed<ObservedSettings> settings;
    return settings.get();
}

// What changed in between is seen by the comparison.
void ObservedSettings::add(std::shared_ptr<ObservedSetting> setting) {
    queue_.async([this, setting = std::move(setting)] {
        settings_.push_back(setting);
        compare();
    });
}

void ObservedSettings::remove(const std::shared_ptr<ObservedSetting>& setting) {
    queue_.async([this, setting] { std::erase(settings_, setting); });
}

void ObservedSettings::compare() {
    if (!isComparisonDue_.exchange(true))
        queue_.async([this] { compareAll(); });
}

void ObservedSettings::compareAll() {
    isComparisonDue_ = false;
    std::vector<const NativeSetting*> natives;
    natives.reserve(settings_.size());
    for (const auto& setting : settings_)
        natives.push_back(&setting->native());
    auto values = NativeSetting::values(natives);
    for (std::size_t index = 0; index < settings_.size(); ++index)
        settings_[index]->notify(std::move(values[index]));
}

} // namespace Platform
