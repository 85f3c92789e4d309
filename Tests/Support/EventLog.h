#pragma once

#include "Tests/Support/WaitUntil.h"

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

/// What happened, in order. Callable on any thread.
class EventLog {
public:
    void add(std::string event) {
        const std::lock_guard lock(mutex_);
        events_.push_back(std::move(event));
    }

    std::vector<std::string> events() const {
        const std::lock_guard lock(mutex_);
        return events_;
    }

    bool reaches(std::size_t count) const {
        return waitUntil([&] { return events().size() >= count; });
    }

    /// What happened, once there are so many events.
    std::vector<std::string> after(std::size_t count) const {
        reaches(count);
        return events();
    }

    /// The same, which is forgotten then.
    std::vector<std::string> take(std::size_t count) {
        reaches(count);
        const std::lock_guard lock(mutex_);
        return std::exchange(events_, {});
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> events_; // mutex_
};

} // namespace TestSupport
