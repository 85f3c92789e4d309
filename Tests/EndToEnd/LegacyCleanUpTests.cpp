// The three tools that every launch runs, with others in their place.

#include "Tests/EndToEnd/AgentTest.h"
#include "Tests/Support/Linux/ChildProcess.h"

using namespace TestSupport;

namespace {

class LegacyCleanUp : public AgentTest {
protected:
    LegacyCleanUp() {
        fs::create_directory(tools);
        trial.wrapper = {"unshare", "-rm", "sh", "-c",
                         "mount -t overlay tools -o lowerdir=\"$TOOLS\":/usr/bin /usr/bin && "
                         "exec \"$0\""};
        trial.environment["TOOLS"] = tools;
    }

    void SetUp() override {
        auto probe = trial.wrapper;
        probe.emplace_back("echo");
        if (ChildProcess(probe, {"TOOLS=" + tools.string()}).readAll().empty())
            GTEST_SKIP() << "needs a mount namespace of its own (unshare -rm, overlay)";
    }

    // A tool that keeps a record of how it was run, with all that is on its standard input.
    void install(const std::string& name, const std::string& rest) const {
        writeFile(tools / name, "#!/bin/sh\nprintf '%s\\n' \"$0 $*,$(od -An -c)\" >>" +
                                    record.string() + "\n" + rest + "\n");
        fs::permissions(tools / name, fs::perms::owner_all);
    }

    const fs::path tools = trial.home() / "tools";
    const fs::path record = trial.home() / "runs";
    const std::string first =
        "/usr/bin/defaults write com.tarnwell.VesperX8 RunAgent -bool FALSE,  \\n\n";
    const std::string second =
        "/usr/bin/defaults write com.tarnwell.VesperX9 RunAgent -bool FALSE,  \\n\n";
    const std::string third = "/bin/launchctl remove com.tarnwell.VesperX4Agent,  \\n\n";
};

TEST_F(LegacyCleanUp, RunsThreeToolsInOrderWhateverTheyDo) {
    for (const auto* rest :
         {"", "echo no such domain >&2; exit 1", "yes | head -c 1000000", "kill -KILL $$"}) {
        install("defaults", rest);
        install("launchctl", rest);
        start();
        EXPECT_EQ(contentOf(record), first + second + third) << rest;
        fs::remove(record);
        expectToEnd();
    }
    fs::remove(tools / "launchctl");
    start();
    EXPECT_EQ(contentOf(record), first + second);
    expectNothingMore();
}

TEST_F(LegacyCleanUp, ThatHangsHoldsUpNoEnd) {
    install("defaults", "");
    install("launchctl", "exec sleep 60");
    ASSERT_TRUE(trial.launch());
    EXPECT_TRUE(waitUntil([&] { return contentOf(record) == first + second + third; }));
    expectToEnd();
}

} // namespace
