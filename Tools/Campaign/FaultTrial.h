#pragma once

#include "Tools/Campaign/Desk.h"

#include <atomic>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace Campaign {

/// An agent that meets a fault, and whether it goes on notifying.
class FaultTrial {
public:
    bool start();

    /// Starts the agent by this command, which ends with its path.
    bool start(std::vector<std::string> wrapper);

    /// Saves a file that is unlike any other, and waits until it is notified; counted.
    void expectNotified();
    void expectNotified(const std::filesystem::path& folder);

    /// Of a file that was saved by `save`; the deadline only ends what has failed.
    void awaitNotified(const std::filesystem::path& path);
    std::filesystem::path save(const std::filesystem::path& folder);

    /// That the agent ends well within a second of being asked; counted like a change.
    void expectEnd(int signal = SIGTERM);

    /// Counts what was expected and did not happen.
    void expect(bool hasHappened);

    Desk desk;
    int changes = 0;
    int lost = 0;

private:
    int number_ = 0;
};

/// Does something over and over on a thread of its own, until it is destroyed.
class Meanwhile {
public:
    explicit Meanwhile(std::function<void()> action);
    ~Meanwhile();
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

private:
    std::atomic<bool> isOver_ = false;
    std::thread thread_;
};

} // namespace Campaign
