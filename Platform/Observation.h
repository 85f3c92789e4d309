#pragma once

#include <memory>
#include <utility>

namespace Platform {

/// A subscription, which ends with the object. Main thread.
class [[nodiscard]] Observation {
public:
    /// Keeps alive what `ObserverList` calls.
    explicit Observation(std::shared_ptr<const void> observer)
        : observer_(std::move(observer)) {}

    Observation(Observation&&) noexcept = default;
    Observation& operator=(Observation&&) noexcept = default;
    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;
    ~Observation() = default;

private:
    std::shared_ptr<const void> observer_;
};

} // namespace Platform
