#pragma once

#include "Tests/Support/Testing.h"
#include "Tools/AgentTrial.h"

/// An agent process: files in, notifications out.
class AgentTest : public ::testing::Test {
protected:
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

    /// Proves that nothing was said of what came before: a further change is the next thing said.
    void expectNothingMore() {
        const auto marker = trial.library() / "StartupItems" / std::to_string(++saves);
        trial.save(marker, std::to_string(saves));
        expectNext("New: " + marker.string());
    }

    static inline const std::string agents = "~/Library/LaunchAgents/";
    Tools::AgentTrial trial{CORBEL_AGENT};
    int saves = 0;
};
