// The agent as a process: files in, notifications out.

#include "Tools/AgentTrial.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using Tools::jobFile;
namespace fs = std::filesystem;

const std::string title = "Vesper Pro noticed a change \u2014 ";
const std::string agents = "~/Library/LaunchAgents/";

class ReportedChanges : public ::testing::Test {
protected:
    void start() { ASSERT_TRUE(trial.start()); }

    void expectNext(const std::string& body) {
        const auto line = trial.nextLine();
        ASSERT_TRUE(line) << "nothing came, expected " << body;
        EXPECT_EQ(line->text, title + body);
    }

    // Proves that nothing was said of what came before: a further change is the next thing said.
    void expectNothingMore() {
        const auto name = "marker" + std::to_string(++markers);
        trial.save(trial.library() / "StartupItems" / name, name);
        expectNext("New: " + (trial.library() / "StartupItems" / name).string());
    }

    Tools::AgentTrial trial{CORBEL_AGENT};
    int markers = 0;
};

TEST_F(ReportedChanges, OneJobThroughItsLife) {
    const auto job = trial.userAgents() / "x.plist";
    start();
    trial.save(job, jobFile("org.example.x"));
    expectNext("New: " + agents + "x.plist");
    trial.save(job, jobFile("org.example.x", "\n"));
    expectNext("Modified: " + agents + "x.plist");
    fs::rename(job, trial.userAgents() / "y.plist");
    fs::copy_file(trial.userAgents() / "y.plist", trial.userAgents() / "copy.plist");
    expectNothingMore();
    fs::remove(trial.userAgents() / "y.plist");
    expectNext("Deleted: " + agents + "y.plist");
    EXPECT_EQ(trial.end(), EXIT_SUCCESS);
}

TEST_F(ReportedChanges, AllFiveFoldersAndAnyKindOfFile) {
    start();
    const fs::path files[] = {trial.library() / "LaunchAgents/a.plist",
                              trial.library() / "LaunchDaemons/.hidden",
                              trial.library() / "StartupItems/text",
                              trial.library() / "PrivilegedHelperTools/org.example.tool"};
    for (const auto& file : files) {
        trial.save(file, "content of " + file.string());
        expectNext("New: " + file.string());
    }
    trial.save(trial.userAgents() / ".DS_Store", "finder");
    fs::create_directory(trial.userAgents() / "folder");
    TestSupport::writeFile(trial.userAgents() / "folder/within.plist", jobFile("org.example.in"));
    trial.save(trial.userAgents() / "maker.plist", jobFile("com.tarnwell.updater"));
    expectNothingMore();
}

TEST_F(ReportedChanges, WhatStoodThereAtLaunchIsKnownAndDeletionsTakeEachOthersPlace) {
    TestSupport::writeFile(trial.userAgents() / "one", "1");
    TestSupport::writeFile(trial.userAgents() / "two", "2");
    start();
    expectNothingMore();
    fs::remove(trial.userAgents() / "one");
    fs::remove(trial.userAgents() / "two");
    expectNext("Deleted: " + agents + "two");
    expectNothingMore();
}

TEST_F(ReportedChanges, WhatIsUndoneAtOnceIsNotReported) {
    start();
    trial.save(trial.userAgents() / "brief", "1");
    fs::remove(trial.userAgents() / "brief");
    expectNothingMore();
}

TEST_F(ReportedChanges, AJobThatCanNoLongerBeReadCountsAsDeleted) {
    TestSupport::writeFile(trial.userAgents() / "x.plist", jobFile("org.example.x"));
    start();
    fs::remove(trial.userAgents() / "x.plist");
    fs::create_symlink("/dev/zero", trial.userAgents() / "x.plist");
    expectNext("Deleted: " + agents + "x.plist");
}

TEST_F(ReportedChanges, NamesThatAreNoTextAreShownSafely) {
    start();
    trial.save(trial.userAgents() / "latin\xE9", "1");
    expectNext("New: " + agents + "latin\uFFFD");
    trial.save(trial.userAgents() / "a\nNew: b\x1B[2J", "2");
    expectNext("New: " + agents + "a\\nNew: b\\u{1B}[2J");
}

TEST_F(ReportedChanges, MissingAndVanishingFoldersLeaveTheOthersWatched) {
    fs::remove(trial.userAgents());
    TestSupport::writeFile(trial.library() / "LaunchDaemons/d.plist", jobFile("org.example.d"));
    start();
    EXPECT_FALSE(fs::exists(trial.userAgents()));
    fs::remove_all(trial.library() / "LaunchDaemons");
    expectNext("Deleted: " + (trial.library() / "LaunchDaemons/d.plist").string());
    fs::create_directory(trial.userAgents());
    expectNothingMore();
}

} // namespace
