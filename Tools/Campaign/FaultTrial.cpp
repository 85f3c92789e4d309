#include "Tools/Campaign/FaultTrial.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace Campaign {

using Clock = std::chrono::steady_clock;
using std::chrono::seconds;

bool FaultTrial::start() {
    const bool hasStarted = desk.trial.start();
    expect(hasStarted);
    return hasStarted;
}

bool FaultTrial::start(std::vector<std::string> wrapper) {
    desk.trial.wrapper = std::move(wrapper);
    return start();
}

void FaultTrial::expectNotified() {
    expectNotified(desk.trial.userAgents());
}

void FaultTrial::expectNotified(const std::filesystem::path& folder) {
    awaitNotified(save(folder));
}

std::filesystem::path FaultTrial::save(const std::filesystem::path& folder) {
    auto path = folder / ("change-" + std::to_string(++number_));
    desk.trial.save(path, path.string());
    return path;
}

void FaultTrial::awaitNotified(const std::filesystem::path& path) {
    const auto end = Clock::now() + seconds(30);
    const auto name = "/" + path.filename().string();
    bool isNotified = false;
    while (!isNotified && Clock::now() < end) {
        const auto body = desk.next(std::chrono::milliseconds(100));
        isNotified = body && body->starts_with("New: ") && body->ends_with(name);
    }
    expect(isNotified);
}

void FaultTrial::expectEnd(int signal) {
    const auto start = Clock::now();
    const auto code = desk.trial.end(signal);
    const std::chrono::duration<double> taken = Clock::now() - start;
    if (code != EXIT_SUCCESS || taken > seconds(1))
        std::fprintf(stderr, "ended with %d after %.2f s\n", code.value_or(-1), taken.count());
    expect(code == EXIT_SUCCESS && taken < seconds(1));
}

void FaultTrial::expect(bool hasHappened) {
    ++changes;
    lost += hasHappened ? 0 : 1;
}

Meanwhile::Meanwhile(std::function<void()> action)
    : thread_([this, action = std::move(action)] {
        while (!isOver_)
            action();
    }) {}

Meanwhile::~Meanwhile() {
    isOver_ = true;
    thread_.join();
}

} // namespace Campaign
