#pragma once

#include "Platform/FileHandle.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Loops/GObjectPtr.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

namespace Platform {

/// The process's one connection to the system's message bus, made when first needed, and anew
/// after the bus has gone. Callable on any thread, whether a main loop runs or not.
class SystemBus {
public:
    static SystemBus& shared();

    SystemBus() = default;

    /// The open file that the method answers with. Absent when there is no bus, nobody who has the
    /// destination's name, a refusal, or no answer while the patience lasts; in this last
    /// case nobody is asked over this bus for a minute, so that many calls do not pay for the
    /// same silence.
    std::optional<FileHandle> openFile(const GLibBusMethod& method, const GVariantPtr& arguments,
                                       std::chrono::milliseconds patience);

private:
    using Clock = std::chrono::steady_clock;

    GObjectPtr<GDBusConnection> connectionUntil(Clock::time_point end);
    void restIfPast(Clock::time_point end); // with mutex_ held

    std::mutex mutex_;
    std::string address_;                    // mutex_
    GObjectPtr<GDBusConnection> connection_; // mutex_
    Clock::time_point restsUntil_;           // mutex_
};

} // namespace Platform
