#pragma once

#include "Platform/DispatchQueue.h"
#include "Platform/Mutex.h"
#include "Platform/Native/NativeSetting.h"
#include "Platform/UserDefaults.h"

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace Platform {

/// A setting with its observer, and the value that the observer knows.
class ObservedSetting {
public:
    using Value = std::optional<PropertyList>;

    /// The present value counts as known.
    ObservedSetting(std::unique_ptr<NativeSetting> native, std::string keyPath,
                    UserDefaults::Handler handler);

    const NativeSetting& native() const { return *native_; }

    /// Calls the handler unless it knows the value already. On the queue of `ObservedSettings`.
    void notify(Value value);

    /// Waits for a handler under way, unless called by it; none starts afterwards. Any thread.
    void silence();

private:
    const std::unique_ptr<NativeSetting> native_;
    const std::string keyPath_;
    const UserDefaults::Handler handler_;
    Value known_; // on the queue only

    Mutex calling_; // held while the handler runs
    std::atomic<std::thread::id> caller_;
    std::atomic<bool> isSilent_ = false;
};

/// All observed settings of this process. Callable on any thread; handlers run on the queue.
class ObservedSettings {
public:
    static ObservedSettings& shared();

    void add(std::shared_ptr<ObservedSetting> setting);
    void remove(const std::shared_ptr<ObservedSetting>& setting);

    /// Has all values compared with those that the observers know.
    void compare();

private:
    void compareAll();

    // Reading a file may hang.
    const DispatchQueue queue_ = DispatchQueue::serialBlocking("com.tarnwell.UserDefaults");
    std::vector<std::shared_ptr<ObservedSetting>> settings_; // on the queue only
    std::atomic<bool> isComparisonDue_ = false;              // one that has not begun
};

} // namespace Platform
