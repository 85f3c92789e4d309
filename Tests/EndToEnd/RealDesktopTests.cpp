// The agent on a desktop as users have it: an X server, a window manager, a session bus and a
// notification daemon that nobody here wrote.

#include "Tests/EndToEnd/AgentTest.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopSession.h"
#include "Tests/Support/Linux/MainApplication.h"

using namespace TestSupport;

namespace {

class RealDesktop : public AgentTest {
protected:
    RealDesktop() {
        makeProgram(menu, "grep Show"); // the user's choice among a notification's actions
        makeProgram(application, "echo \"$1\" >\"$0.link\"");
        writeFile(configuration, "[global]\nwidth = 420\norigin = top-right\noffset = 24x24\n"
                                 "font = DejaVu Sans 10\nframe_width = 1\ncorner_radius = 6\n"
                                 "dmenu = " +
                                     menu.string() + "\n");
        trial.environment.insert(
            {{"DISPLAY", session.display()}, {"DBUS_SESSION_BUS_ADDRESS", bus.address()}});
    }

    static void makeProgram(const fs::path& path, const std::string& command) {
        writeFile(path, "#!/bin/sh\n" + command + "\n");
        fs::permissions(path, fs::perms::owner_all);
    }

    std::vector<std::string> sessionEnvironment() const {
        return {"DISPLAY=" + session.display(), "DBUS_SESSION_BUS_ADDRESS=" + bus.address(),
                "HOME=" + trial.home().string()};
    }

    std::string ask(std::vector<std::string> command) const {
        return ChildProcess(std::move(command), sessionEnvironment()).readLine();
    }

    bool displays(const std::string& count) const {
        return waitUntil([&] { return ask({"dunstctl", "count", "displayed"}) == count; });
    }

    DesktopSession session;
    BusDaemon bus;
    const fs::path menu = trial.home() / "menu";
    const fs::path application = trial.home() / "application";
    const fs::path configuration = trial.home() / "dunstrc";
};

// Leaves a screenshot: what the user sees.
TEST_F(RealDesktop, ShowsAChangeWhoseButtonOpensTheJobAndSurvivesAStandstill) {
    const fs::path screenshot = CORBEL_BINARY_DIR "/notification.png";
    installMainApplication(trial.home(), "Name=V\nExec=" + application.string() + " %u\n");
    const ChildProcess daemon({"dunst", "-config", configuration.string()}, sessionEnvironment());
    ASSERT_TRUE(displays("0"));
    start();
    save("org.example.backup.plist");
    ASSERT_TRUE(displays("1"));
    fs::remove(screenshot);
    EXPECT_EQ(ask({"scrot", "--overwrite", "--autoselect", "156,0,484,104", screenshot.string()}),
              "");
    EXPECT_TRUE(fs::exists(screenshot));

    ask({"dunstctl", "context"});
    EXPECT_TRUE(waitUntil([&] { return fs::exists(application.string() + ".link"); }));

    ask({"dunstctl", "close-all"});
    ASSERT_TRUE(displays("0"));
    daemon.send(SIGSTOP);
    save("late.plist");
    daemon.send(SIGCONT);
    EXPECT_TRUE(displays("1"));
    save("next.plist");
    EXPECT_TRUE(displays("2"));
}

} // namespace
