// The main application in front shows a change itself, and the agent says nothing of it.

#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/ChildProcess.h"
#include "Tests/Support/Linux/DesktopSession.h"
#include "Tests/Support/Linux/MainApplication.h"
#include "Tools/AgentTrial.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

namespace fs = std::filesystem;

class FrontApplication : public ::testing::Test {
protected:
    void SetUp() override {
        TestSupport::installMainApplication(
            trial.home(), "Exec=zenity\nName=Something else\nName[de]=Vesper Pro\n");
        trial.environment["DISPLAY"] = session.display();
        trial.environment["LC_ALL"] = "de_DE.UTF-8";
        // The sanitizers do not bear the way in which the wrapper would pass on gethostname.
        trial.environment["NSS_WRAPPER_DISABLE_DEEPBIND"] = "1";
    }

    fs::path change() {
        auto job = trial.userAgents() / ("job" + std::to_string(++jobs));
        trial.save(job, job.string());
        return job;
    }

    void expectSilence() {
        change();
        EXPECT_TRUE(trial.waitUntilAtRest());
    }

    void expectReport() {
        const auto job = change();
        const auto line = trial.nextLine();
        ASSERT_TRUE(line);
        EXPECT_TRUE(line->text.ends_with("/" + job.filename().string())) << line->text;
    }

    TestSupport::DesktopSession session;
    Tools::AgentTrial trial{CORBEL_AGENT};
    int jobs = 0;
};

TEST_F(FrontApplication, SilencesReportsWhenItIsTheMainOneByItsLocalisedName) {
    ASSERT_TRUE(trial.start());
    expectReport();
    const TestSupport::ForeignWindow main(session.display(), "vesper", "Com.tarnwell.vesperpro10");
    expectSilence();
    const TestSupport::ForeignWindow other(session.display(), "vesper", "Something else");
    expectReport();
}

TEST_F(FrontApplication, IsUnknownWhileTheXServerHangsAndOnceItIsGone) {
    ASSERT_TRUE(trial.start());
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
    trial.environment.erase("DISPLAY");
    trial.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    ASSERT_TRUE(trial.start());
    expectReport();
    const std::vector<std::string> environment = {"DISPLAY=" + session.display(),
                                                  "DBUS_SESSION_BUS_ADDRESS=" + bus.address(),
                                                  "HOME=" + trial.home().string()};
    TestSupport::ChildProcess main({"zenity", "--info", "--text=Jobs"}, environment);
    ASSERT_TRUE(session.waitForActiveWindow());
    expectSilence();
    main.end();
    expectReport();
}

} // namespace
