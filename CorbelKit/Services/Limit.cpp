#include "CorbelKit/Services/Limit.h"

#include "Platform/NeverDestroyed.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <utility>

namespace CorbelKit {
namespace {

std::chrono::nanoseconds checkedDelay(double seconds) {
    const double nanoseconds = seconds * 1'000'000'000;
    const double bound = std::ldexp(1.0, 64);
    if (!std::isfinite(nanoseconds) || nanoseconds <= -1 || nanoseconds >= bound) {
        std::cerr << "Fatal error: a delay of " << seconds << " seconds" << std::endl;
        std::abort();
    }
    // Half of the range that is allowed does not fit the clock's signed count.
    if (nanoseconds >= std::ldexp(1.0, 63))
        return std::chrono::nanoseconds::max();
    return std::chrono::nanoseconds(static_cast<std::int64_t>(nanoseconds));
}

} // namespace

Limit& Limit::shared() {
    static const Platform::NeverDestroyed<Limit> limit;
    return limit.get();
}

void Limit::request(std::string identifier, double delayInSeconds, std::function<void()> action) {
    queue_.async([this, identifier = std::move(identifier), delayInSeconds,
                  action = std::move(action)] { begin(identifier, delayInSeconds, action); });
}

void Limit::begin(const std::string& identifier, double delayInSeconds,
                  std::function<void()> action) {
    if (!identifiers_.insert(identifier).second)
        return;
    queue_.asyncAfter(checkedDelay(delayInSeconds), [this, identifier, action = std::move(action)] {
        identifiers_.erase(identifier);
        action();
    });
}

} // namespace CorbelKit
