#pragma once

#include "Platform/DispatchQueue.h"

#include <functional>
#include <set>
#include <string>

namespace CorbelKit {

/// Makes one execution out of many requests for the same work: the first request under an
/// identifier starts a wait, requests during the wait are dropped, and the first one's action runs
/// at its end. The identifier is free again before the action runs, so a request made by or during
/// the action leads to a further execution.
class Limit {
public:
    /// The one of the process, never destroyed.
    static Limit& shared();

    Limit() = default;
    ~Limit() = default;
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;
    Limit(Limit&&) = delete;
    Limit& operator=(Limit&&) = delete;

    /// Callable on any thread. The action runs on the limit's own queue. A delay that is not
    /// finite, is negative by a nanosecond or more, or does not fit 64 bits of nanoseconds is an
    /// error of the program and stops the process. The object outlives what was requested of it.
    void request(std::string identifier, double delayInSeconds, std::function<void()> action);

private:
    void begin(const std::string& identifier, double delayInSeconds, std::function<void()> action);

    const Platform::DispatchQueue queue_ = Platform::DispatchQueue::serial("com.tarnwell.Limit");
    std::set<std::string, std::less<>> identifiers_; // whose execution is pending; on queue_ only
};

} // namespace CorbelKit
