#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TestSupport {

/// An agent process in a world of its own: a home and a local library in a temporary folder, with
/// the five job folders, empty. What it prints is read line by line. Ended with the object.
class AgentTrial {
public:
    using Clock = std::chrono::steady_clock;

    struct Line {
        std::string text;
        Clock::time_point time; ///< at which it was read
    };

    /// A deadline for what should happen: it only ends a trial that has failed.
    static constexpr std::chrono::seconds patience{20};

    explicit AgentTrial(std::filesystem::path agent);
    ~AgentTrial();
    AgentTrial(const AgentTrial&) = delete;
    AgentTrial& operator=(const AgentTrial&) = delete;
    AgentTrial(AgentTrial&&) = delete;
    AgentTrial& operator=(AgentTrial&&) = delete;

    /// Set before `start`; beyond these the agent's environment is empty but for PATH.
    std::map<std::string, std::string> environment;

    /// The beginning of a command that ends with the agent's path; empty: that alone.
    std::vector<std::string> wrapper;

    /// The name of threads that are not the agent's own, and never rest; empty: there are none.
    std::string restlessThreads;

    /// Starts the agent and waits until it watches; false when it did not come to that.
    bool start();

    /// Starts the agent, and forgets about one that was started before.
    bool launch();

    /// The next line that the agent prints; absent when none came in time, or it has ended.
    std::optional<Line> nextLine(std::chrono::milliseconds deadline = patience);

    /// Waits until the agent has come to rest: no thread of it ran for longer than any of its waits
    /// lasts. Gives the number of times that its threads have gone to sleep; absent when it never
    /// came to rest.
    std::optional<long> waitUntilAtRest() const;

    /// The sum over all its threads of a number in /proc/<process>/task/<thread>/status.
    long sumOverThreads(std::string_view name) const;

    /// Asks the agent to end, and waits; gives its exit code, or minus the signal that ended it.
    /// Absent where it does not end: what it is at is then printed, and it is killed, for it would
    /// hold the files that whoever runs the tests reads to their end.
    std::optional<int> end(int signal = SIGTERM);

    pid_t process() const { return process_; }

    std::filesystem::path home() const { return folder_ / "home"; }

    std::filesystem::path library() const { return folder_ / "Library"; }

    std::filesystem::path userAgents() const { return home() / "Library/LaunchAgents"; }

    /// A place on the same volume from which a file can be moved into a job folder.
    std::filesystem::path elsewhere() const { return folder_ / "elsewhere"; }

    /// Moves a file with the content into place, as careful programs save.
    void save(const std::filesystem::path& path, std::string_view content) const;

private:
    std::vector<std::string> makeEnvironment() const;
    bool waitUntilReady() const;
    bool readMore(Clock::time_point deadline);
    void closeOutput();

    std::filesystem::path agent_;
    TemporaryFolder folder_;
    pid_t process_ = -1;
    int output_ = -1;
    int notifySocket_ = -1;
    std::string unread_;
    Clock::time_point readTime_;
};

/// The number behind "<name>:" in a file of /proc; -1 where there is none.
long readProcessNumber(const std::filesystem::path& file, std::string_view name);

/// The text of a job file with the label.
std::string jobFile(std::string_view label, std::string_view extra = "");

} // namespace TestSupport
