#pragma once

#include "Tests/Support/Linux/AgentTrial.h"
#include "Tests/Support/Linux/NotificationService.h"
#include "Tests/Support/Testing.h"

#include <cstdlib>
#include <sstream>

/// An agent process: files in, notifications out.
class AgentTest : public ::testing::Test {
protected:
    /// Under a command in front of the agent's, where the environment names one: words with colons.
    AgentTest() {
        const char* const confine = std::getenv("CORBEL_CONFINE");
        std::istringstream words(confine != nullptr ? confine : "");
        for (std::string word; std::getline(words, word, ':');)
            trial.wrapper.push_back(word);
        if (const char* const restless = std::getenv("CORBEL_RESTLESS_THREADS"))
            trial.restlessThreads = restless;
    }

    void start() { ASSERT_TRUE(trial.start()); }

    std::filesystem::path job(const std::string& name) const { return trial.userAgents() / name; }

    /// With content that no other file has or had.
    void save(const std::string& name) { trial.save(job(name), std::to_string(++saves)); }

    /// That the next line that the agent prints ends so.
    void expectNext(const std::string& end) {
        const auto line = trial.nextLine();
        ASSERT_TRUE(line) << "nothing was printed, expected " << end;
        EXPECT_THAT(line->text, testing::EndsWith(end));
    }

    /// That the agent ends well when asked, and within the second, whatever it is at; a machine
    /// that is busy with other tests gets one more.
    void expectToEnd(int signal = SIGTERM) {
        const auto start = TestSupport::AgentTrial::Clock::now();
        EXPECT_EQ(trial.end(signal), EXIT_SUCCESS) << "signal " << signal;
        EXPECT_LT(TestSupport::AgentTrial::Clock::now() - start, std::chrono::seconds(2));
    }

    /// What the service is asked to show next.
    static TestSupport::NotifyCall next(TestSupport::NotificationService& service) {
        const auto call = service.next();
        EXPECT_TRUE(call) << "no notification";
        return call.value_or(TestSupport::NotifyCall());
    }

    /// What the service is asked to show once the file was saved.
    TestSupport::NotifyCall shown(TestSupport::NotificationService& service,
                                  const std::string& name) {
        save(name);
        auto call = next(service);
        EXPECT_THAT(call.body, testing::EndsWith(name));
        return call;
    }

    /// Proves that nothing was said of what came before: a further change is the next thing said.
    void expectNothingMore() {
        const auto marker = trial.library() / "StartupItems" / std::to_string(++saves);
        trial.save(marker, std::to_string(saves));
        expectNext("New: " + marker.string());
    }

    static inline const std::string agents = "~/Library/LaunchAgents/";
    TestSupport::AgentTrial trial{CORBEL_AGENT};
    int saves = 0;
};
