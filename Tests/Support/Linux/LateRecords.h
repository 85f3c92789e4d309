#pragma once

#include "Platform/DispatchQueue.h"
#include "Tests/Support/Testing.h"

#include <atomic>
#include <fstream>
#include <memory>

namespace TestSupport {

/// Keeps threads that run the queues busy: what they would do comes late.
class HeldWorkers {
public:
    /// How many there are. No test takes note of more.
    static constexpr int all = 2;

    explicit HeldWorkers(int count = all) {
        for (int thread = 0; thread < count; ++thread) {
            Platform::DispatchQueue::concurrent("test.held").async([state = state_] {
                ++state->held;
                waitUntil([&] { return state->mayProceed.load(); }, std::chrono::minutes(1));
            });
        }
        waitUntil([&] { return state_->held == count; });
    }

    ~HeldWorkers() { state_->mayProceed = true; }

    HeldWorkers(const HeldWorkers&) = delete;
    HeldWorkers& operator=(const HeldWorkers&) = delete;
    HeldWorkers(HeldWorkers&&) = delete;
    HeldWorkers& operator=(HeldWorkers&&) = delete;

private:
    struct State {
        std::atomic<int> held = 0;
        std::atomic<bool> mayProceed = false;
    };

    const std::shared_ptr<State> state_ = std::make_shared<State>();
};

/// Brings about more records of the folder than the system keeps, if nobody reads them.
inline void overflowInotify(const fs::path& folder) {
    int limit = 16384;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    const auto one = folder / "file";
    const auto other = folder / "other";
    writeFile(one, "1");
    for (int event = 0; event < limit / 2 + 10; ++event) {
        fs::rename(one, other);
        fs::rename(other, one);
    }
}

} // namespace TestSupport
