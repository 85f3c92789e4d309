// The main application in front shows a change itself, and the agent says nothing of it.

#include "Tests/EndToEnd/AgentTest.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopSession.h"
#include "Tests/Support/Linux/MainApplication.h"

namespace {

class FrontApplication : public AgentTest {
protected:
    FrontApplication() {
        TestSupport::installMainApplication(
            trial.home(), "Exec=vesper\nName=Something else\nName[de]=Vesper Pro\n");
        trial.environment["DISPLAY"] = session.display();
        trial.environment["LC_ALL"] = "de_DE.UTF-8";
    }

    void expectSilence() {
        save("silent" + std::to_string(saves));
        EXPECT_TRUE(trial.waitUntilAtRest());
    }

    void expectReport() {
        const auto name = "reported" + std::to_string(saves);
        save(name);
        expectNext("/" + name);
    }

    /// An application comes to the accessibility bus in its own time, and its answer may come too
    /// late while the machine is busy: what was saved before that is reported.
    bool isSilentInTheEnd() {
        return TestSupport::waitUntil([this] {
            expectSilence();
            return !trial.nextLine(std::chrono::milliseconds(0));
        });
    }

    TestSupport::DesktopSession session;
};

TEST_F(FrontApplication, SilencesReportsWhenItIsTheMainOneByItsLocalisedName) {
    start();
    expectReport();
    const TestSupport::ForeignWindow main(session.display(), "vesper", "Com.tarnwell.vesperpro10");
    expectSilence();
    const TestSupport::ForeignWindow other(session.display(), "vesper", "Something else");
    expectReport();
}

TEST_F(FrontApplication, IsUnknownWhileTheXServerHangsAndOnceItIsGone) {
    start();
    const TestSupport::ForeignWindow main(session.display(), "a", "com.tarnwell.VesperPro10");
    expectSilence();
    session.freeze();
    expectReport();
    session.thaw();
    expectSilence();
    session.crash();
    expectReport();
    EXPECT_EQ(trial.end(), EXIT_SUCCESS);
}

// A session without an X server, as far as the agent knows.
TEST_F(FrontApplication, IsFoundOnTheAccessibilityBusByItsProgram) {
    const TestSupport::BusDaemon bus(TestSupport::BusDaemon::ActivatableServices{
        {"org.a11y.Bus", "/usr/libexec/at-spi-bus-launcher"}});
    TestSupport::installMainApplication(trial.home(), "Exec=zenity\nName=Vesper Pro\n");
    trial.environment.erase("DISPLAY");
    trial.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    start();
    expectReport();
    const std::vector<std::string> environment = {"DISPLAY=" + session.display(),
                                                  "DBUS_SESSION_BUS_ADDRESS=" + bus.address(),
                                                  "HOME=" + trial.home().string()};
    TestSupport::ChildProcess main({"zenity", "--info", "--text=Jobs"}, environment);
    ASSERT_TRUE(session.waitForActiveWindow());
    EXPECT_TRUE(isSilentInTheEnd());
    main.end();
    expectReport();
}

} // namespace
