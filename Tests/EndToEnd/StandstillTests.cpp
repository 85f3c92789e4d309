// What stands still holds nothing but itself: the agent goes on, and ends when asked.

#include "Tests/EndToEnd/AgentTest.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopSession.h"
#include "Tests/Support/Linux/HungFile.h"
#include "Tests/Support/Linux/HungFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <fstream>
#include <random>

using namespace TestSupport;

namespace {

using Standstill = AgentTest;

std::string outputOf(pid_t process) {
    return "/proc/" + std::to_string(process) + "/fd/1";
}

// A stopped terminal, or a pipe whose reader sleeps.
void fillOutputOf(pid_t process) {
    const Platform::FileHandle pipe(
        open(outputOf(process).c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    while (write(pipe.fileDescriptor(), "\n", 1) == 1) {
    }
}

TEST_F(Standstill, OfTheTerminalAndTheDisplay) {
    const BusDaemon bus;
    const DesktopSession session;
    trial.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    trial.environment["DISPLAY"] = session.display();
    start();
    session.freeze();
    fillOutputOf(trial.process());
    save("x.plist");
    ASSERT_TRUE(trial.waitUntilAtRest());
    NotificationService service(bus.address());
    service.setManner(NotificationService::Manner::refuses);
    EXPECT_THAT(next(service).body, testing::EndsWith("x.plist"));
    shown(service, "y.plist"); // the refusals are lines for the terminal
    service.setManner(NotificationService::Manner::answers);
    shown(service, "z.plist");
    const ChildProcess second(
        {"sh", "-c", "\"$0\" >\"$1\"; echo $?", CORBEL_AGENT, outputOf(trial.process())},
        {"DBUS_SESSION_BUS_ADDRESS=" + bus.address()});
    EXPECT_EQ(second.readLine(), "75");
    expectToEnd();
}

class StandstillOf : public AgentTest {
protected:
    // The search for leaks at the end would stop every thread, and one that hangs does not stop.
    StandstillOf() {
        trial.environment["ASAN_OPTIONS"] = "verify_asan_link_order=0:detect_leaks=0";
    }

    void SetUp() override {
        save("hung.plist");
        if (!HungFile(job("hung.plist")).isHung())
            GTEST_SKIP() << "needs the right to answer for the file system (CAP_SYS_ADMIN)";
    }
};

// Without them, what changes is reported; with them, when they answer, what they do not except.
TEST_F(StandstillOf, TheSettings) {
    const auto settings = trial.home() / ".config/tarnwell/QX42K7M3ZP.com.tarnwell.Vesper.plist";
    fs::create_directories(settings.parent_path());
    writeFile(settings, "<plist><dict><key>Exceptions</key><array><string>excepted</string>"
                        "</array></dict></plist>");
    HungFile hung(settings);
    start();
    EXPECT_TRUE(hung.isAsked());
    save("x.plist");
    EXPECT_FALSE(trial.nextLine(std::chrono::milliseconds(1100))); // waits for the settings
    expectToEnd();
    expectNext("New: " + agents + "x.plist"); // of what the application does before it ends
    start();
    save("x.plist");
    expectNext("Modified: " + agents + "x.plist");
    hung.answer();
    ASSERT_TRUE(trial.waitUntilAtRest());
    save("excepted");
    expectNothingMore();
}

TEST_F(StandstillOf, AFolderAtLaunch) {
    const auto folder = trial.library() / "LaunchDaemons";
    HungFolder hung(folder);
    if (!hung.isHung())
        GTEST_SKIP() << "needs the right to mount a file system (CAP_SYS_ADMIN)";
    start();
    save("x.plist");
    expectNext("New: " + agents + "x.plist");
    expectToEnd();
    start();
    hung.answer();
    ASSERT_TRUE(trial.waitUntilAtRest());
    fs::remove(folder / HungFolder::fileName); // what was there at launch is no news
    expectNext("Deleted: " + (folder / HungFolder::fileName).string());
}

TEST_F(StandstillOf, AJobFile) {
    start();
    HungFile hung(job("hung.plist"));
    trial.save(trial.elsewhere() / "hung.plist", "changed");
    fs::copy_file(trial.elsewhere() / "hung.plist", job("hung.plist"),
                  fs::copy_options::overwrite_existing);
    save("x.plist");
    expectNext("New: " + agents + "x.plist");
    EXPECT_TRUE(hung.isAsked());
    hung.answer();
    expectNext("Modified: " + agents + "hung.plist");
    const HungFile again(job("hung.plist"));
    save("y.plist");
    EXPECT_TRUE(waitUntil([&] { return again.isAsked(); }));
    expectToEnd();
}

// Before it answers, a request to end is one to the system.
bool answersRequests(pid_t process) {
    std::ifstream lines("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("SigCgt:"))
            return ((std::stoull(line.substr(8), nullptr, 16) >> (SIGTERM - 1)) & 1U) != 0;
    }
    return false;
}

TEST_F(Standstill, AtNoMomentOfALaunchOrAPass) {
    const BusDaemon bus;
    NotificationService service(bus.address());
    trial.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    std::mt19937 random(17); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same moments each time
    for (int round = 0; round < 20; ++round) {
        const bool isLaunch = round % 2 == 0;
        if (isLaunch) {
            ASSERT_TRUE(trial.launch());
            ASSERT_TRUE(waitUntil([&] { return answersRequests(trial.process()); }));
        } else {
            start();
            save("x.plist");
        }
        trial.nextLine(std::chrono::milliseconds(random() % (isLaunch ? 100 : 900)));
        expectToEnd();
    }
}

} // namespace
