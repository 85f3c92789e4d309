#include "Benchmarks/Benchmarks.h"
#include "Benchmarks/Measurement.h"
#include "Tests/Support/Linux/AgentTrial.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>

namespace Benchmarks {
namespace {

using TestSupport::AgentTrial;
using Milliseconds = std::chrono::duration<double, std::milli>;

// The agent's own waits: a burst of events is looked at together, a notification may be replaced.
constexpr double expectedWait = 510 + 300;

double launchTime() {
    double best = 1e9;
    for (int round = 0; round < 9; ++round) {
        AgentTrial trial(CORBEL_AGENT);
        const auto start = AgentTrial::Clock::now();
        if (!trial.start())
            return 1e9;
        best = std::min(best, Milliseconds(AgentTrial::Clock::now() - start).count());
    }
    return best;
}

// The median of several changes, from the moment the file is in its place to the line printed.
double notificationDelay(AgentTrial& trial) {
    std::array<double, 9> delays{};
    int round = 0;
    for (auto& delay : delays) {
        const auto name = "org.example.job" + std::to_string(++round);
        const auto start = AgentTrial::Clock::now();
        trial.save(trial.userAgents() / name, TestSupport::jobFile(name));
        const auto line = trial.nextLine();
        if (!line || !line->text.ends_with(name))
            return 1e9;
        delay = Milliseconds(line->time - start).count();
    }
    std::ranges::nth_element(delays, delays.begin() + delays.size() / 2);
    return delays[delays.size() / 2];
}

bool measureRest(const AgentTrial& trial, std::chrono::seconds length) {
    const auto folder = std::filesystem::path("/proc") / std::to_string(trial.process());
    const auto megabytes = [&](const char* file, const char* name) {
        return static_cast<double>(TestSupport::readProcessNumber(folder / file, name)) / 1024;
    };
    const auto atRest = trial.waitUntilAtRest();
    if (!atRest)
        return report("Wake-ups at rest", 1e9, 0);
    std::this_thread::sleep_for(length);
    const auto wakeUps = trial.sumOverThreads("voluntary_ctxt_switches") - *atRest;
    bool holds = report("Wake-ups in " + std::to_string(length.count()) + " s of rest",
                        static_cast<double>(wakeUps), 0);
    holds = report("Resident at rest", megabytes("smaps_rollup", "Rss"), 12, "MB") && holds;
    holds = report("Private and written at rest", megabytes("smaps_rollup", "Private_Dirty"), 3,
                   "MB") &&
            holds;
    std::printf("  private and unwritten (program text that no other process maps): %.2f MB\n",
                megabytes("smaps_rollup", "Private_Clean"));
    return report("Threads",
                  static_cast<double>(TestSupport::readProcessNumber(folder / "status", "Threads")),
                  6) &&
           holds;
}

} // namespace

bool measureProcess(std::chrono::seconds rest) {
    bool holds = report("Launch to watching, best of nine", launchTime(), 60, "ms");
    AgentTrial trial(CORBEL_AGENT);
    if (!trial.start())
        return report("Start of the agent", 1e9, 0);
    holds = report("Event to notification, median of nine", notificationDelay(trial),
                   expectedWait + 5, "ms") &&
            holds;
    return measureRest(trial, rest) && holds;
}

} // namespace Benchmarks
