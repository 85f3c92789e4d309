#pragma once

#include "Platform/UserDefaults.h"

#include <mutex>
#include <optional>
#include <string>

namespace Platform {

/// A setting that somebody observes: who, and what they were told of it last. For the platform's
/// side of `UserDefaults`, which has only to say that the value may have changed.
class ObservedSetting {
public:
    using Value = std::optional<PropertyList>;

    /// `present` counts as told.
    ObservedSetting(std::string keyPath, UserDefaults::Handler handler, Value present);

    const std::string& keyPath() const { return keyPath_; }

    /// Calls the handler if the value is not the one told last. One call at a time.
    void tell(Value value);

    /// Waits for a handler under way, unless called by it; none starts afterwards. Any thread.
    void silence();

private:
    const std::string keyPath_;
    const UserDefaults::Handler handler_;
    Value told_; // the thread that tells

    std::recursive_mutex mutex_; // held while the handler runs, which may silence itself
    bool isSilent_ = false;      // mutex_
};

} // namespace Platform
