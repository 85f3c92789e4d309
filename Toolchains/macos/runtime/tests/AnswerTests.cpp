// What the user allows and does on macOS, seen from outside the agent.

#include "Tests/EndToEnd/AgentTest.h"
#include "Tests/Support/Linux/ChildProcess.h"

#include <sys/stat.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;
constexpr std::chrono::seconds longerThanAReportTakes{2};

class MacAgent : public AgentTest {
protected:
    MacAgent() {
        mkfifo(actions.c_str(), 0600);
        trial.environment["CORBEL_USER_ACTIONS"] = actions;
    }

    void act(const std::string& line) const { std::ofstream(actions) << line << std::endl; }

    void expectSilence() { EXPECT_FALSE(trial.nextLine(longerThanAReportTakes)); }

    const fs::path actions = trial.elsewhere() / "actions";
};

TEST_F(MacAgent, OpensTheJobOrTheApplicationAtShowAndNothingAtAnyOtherAnswer) {
    start();
    std::string name = "x.plist";
    while (job(name).string().size() % 3 != 0) // GNUstep's NSURL takes no "=" in place of a host
        name = "x" + name;
    save(name);
    expectNext("New: " + agents + name);
    act("answer Remove " + job(name).string());
    expectNext("There is nothing to press");
    act("answer com.apple.UNNotificationDefaultActionIdentifier " + job(name).string());
    expectNext("Answered");
    act("answer ShowAction " + job(name).string());
    const TestSupport::ChildProcess encoder(
        {"sh", "-c", "printf %s \"$0\" | base64 --wrap=0", job(name)});
    expectNext("Opened: vesperpro10joburl://" + encoder.readAll());
    expectNext("Answered");
    fs::remove(job(name));
    expectNext("Deleted: " + agents + name);
    act("answer ShowAction ");
    expectNext("Opened: file:///Applications/Vesper%20Pro.app/");
    expectNext("Answered");
}

TEST_F(MacAgent, SaysNothingThatTheUserDidNotAllow) {
    trial.environment["CORBEL_PERMISSION"] = "refused";
    start();
    save("x.plist");
    expectSilence();
    expectToEnd();

    trial.environment["CORBEL_PERMISSION"] = "failing";
    start();
    expectNext("Notifications are not allowed for this application");
    save("x.plist");
    expectNext("Notifications are not allowed for this application");
    expectToEnd();

    trial.environment["CORBEL_PERMISSION"] = "late";
    start();
    save("x.plist");
    act("allow");
    save("y.plist");
    expectNext("New: " + agents + "y.plist");
}

TEST_F(MacAgent, LeavesToTheMainApplicationInFrontWhatItShowsItself) {
    trial.environment["CORBEL_FRONT_APPLICATION"] = "Vesper Pro";
    start();
    save("x.plist");
    expectSilence();
}

TEST_F(MacAgent, WritesFromRightToLeftWhereTheSystemDoes) {
    trial.environment["CORBEL_RIGHT_TO_LEFT"] = "1";
    start();
    save("x.plist");
    expectNext(agents + "x.plist :New");
}

TEST_F(MacAgent, EndsAtEachRequest) {
    trial.environment["CORBEL_LATE_SIGNALS"] = "200"; // or a signal lost before is luck
    for (const int request : {SIGTERM, SIGINT, SIGHUP}) {
        start();
        save("x.plist");
        expectToEnd(request);
    }
}

TEST_F(MacAgent, RunsOnce) {
    start();
    const TestSupport::ChildProcess second(
        {"sh", "-c", "\"$0\" >/dev/null; echo $?", CORBEL_AGENT},
        {"LD_PRELOAD=libnss_wrapper.so", "NSS_WRAPPER_DISABLE_DEEPBIND=1",
         "ASAN_OPTIONS=verify_asan_link_order=0",
         "CORBEL_LOCAL_LIBRARY=" + trial.library().string(),
         "NSS_WRAPPER_PASSWD=" + (trial.home().parent_path() / "passwd").string(),
         "NSS_WRAPPER_GROUP=" + (trial.home().parent_path() / "group").string()});
    EXPECT_EQ(second.readLine(), "75");
    expectToEnd();
    start();
    save("x.plist");
    expectNext("New: " + agents + "x.plist");
}

/// A copy of the agent's bundle with another principal class.
class PrincipalClass : public testing::TestWithParam<const char*> {};

TEST_P(PrincipalClass, OfAnyKindLeavesTheAgentItsDelegate) {
    const TestSupport::TemporaryFolder copies;
    const auto bundle = copies / "Agent.app";
    fs::copy(fs::canonical(CORBEL_AGENT).parent_path().parent_path().parent_path(), bundle,
             fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    auto information = TestSupport::contentOf(bundle / "Contents/Info.plist");
    const std::string own = "CorbelApplication";
    information.replace(information.find(own), own.size(), GetParam());
    TestSupport::writeFile(bundle / "Contents/Info.plist", information);
    TestSupport::AgentTrial trial(bundle / "Contents/MacOS/Vesper Pro Agent");
    ASSERT_TRUE(trial.start());
    EXPECT_EQ(trial.end(), EXIT_SUCCESS);
}

INSTANTIATE_TEST_SUITE_P(Names, PrincipalClass,
                         testing::Values("NSApplication", "Missing", "NSObject"));

} // namespace
