#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace Platform {

/// Work that the system should not interrupt, held against it for as long as the object lives. An
/// object is used by one thread at a time, on any thread.
///
/// A system that grants nothing, or takes longer than a quarter of a second over it, holds nothing
/// against itself: the work goes on all the same, and the caller is not notified.
class ProcessActivity {
public:
    /// What is held off, as a set. The values are those of NSActivityOptions.
    enum class Options : std::uint64_t {
        suddenTerminationDisabled = 1U << 14U,
        idleSystemSleepDisabled = 1U << 20U,
        userInitiated = 0x00FFFFFF, ///< both, for work that the user asked for
    };

    /// `reason` is for whoever looks up what holds the system: a few words, not localised.
    static ProcessActivity begin(Options options, std::string_view reason);

    ProcessActivity(ProcessActivity&& other) noexcept;
    ProcessActivity& operator=(ProcessActivity&& other) noexcept;
    ProcessActivity(const ProcessActivity&) = delete;
    ProcessActivity& operator=(const ProcessActivity&) = delete;

    /// Gives the system's token back, which ends the activity if `end` did not.
    ~ProcessActivity();

    /// A second call does nothing.
    void end();

private:
    class Impl;
    explicit ProcessActivity(std::unique_ptr<Impl> impl);

    std::unique_ptr<Impl> impl_; // null once ended, and where nothing is held
};

} // namespace Platform
