#include "Platform/ProcessActivity.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/LoginManager.h"
#include "Tests/Support/Testing.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace TestSupport;

namespace {

using Platform::ProcessActivity;
using Options = ProcessActivity::Options;
using Manner = LoginManager::Manner;

constexpr auto busVariable = "DBUS_SYSTEM_BUS_ADDRESS";

class ProcessActivityTest : public testing::Test {
protected:
    bool allClosed() {
        return waitUntil([this] { return logins.inhibitorsOpen() == 0; });
    }

    BusDaemon bus;
    EnvironmentVariable address{busVariable, bus.address()};
    LoginManager logins{bus.address()};
};

} // namespace

TEST_F(ProcessActivityTest, HoldsAnInhibitorOfItsKindUntilItsEnd) {
    const std::pair<Options, const char*> cases[] = {
        {Options::userInitiated, "idle:shutdown"},
        {Options::idleSystemSleepDisabled, "idle"},
        {Options::suddenTerminationDisabled, "shutdown"},
    };
    for (const auto& [options, what] : cases) {
        auto activity = ProcessActivity::begin(options, "Saving \xFF");
        const auto call = logins.next();
        ASSERT_TRUE(call);
        EXPECT_EQ(call->what, what);
        EXPECT_EQ(call->why, "Saving \uFFFD");
        EXPECT_EQ(call->mode, "block");
        EXPECT_EQ(logins.inhibitorsOpen(), 1U);
        activity.end();
        EXPECT_TRUE(allClosed());
        activity.end();
    }
}

TEST_F(ProcessActivityTest, WaitsOnceForOneThatIsSilentAndClosesWhatComesLate) {
    logins.setManner(Manner::holds);
    ProcessActivity::begin(Options::userInitiated, "given up").end();
    ProcessActivity::begin(Options::userInitiated, "not even asked").end();
    EXPECT_EQ(logins.next()->why, "given up");
    logins.grantHeld();
    EXPECT_TRUE(allClosed());

    const BusDaemon another;
    const EnvironmentVariable move(busVariable, another.address());
    LoginManager others(another.address());
    ProcessActivity::begin(Options::userInitiated, "asked").end();
    EXPECT_EQ(others.next()->why, "asked");
    EXPECT_FALSE(logins.next(std::chrono::milliseconds(0)));
}

TEST(ProcessActivity, BeginsWithoutABusWithoutALoginManagerAndAgainstSilence) {
    const BusDaemon empty;
    const TemporaryFolder folder;
    sockaddr_un silent{.sun_family = AF_UNIX, .sun_path = {}};
    (folder / "silent").string().copy(silent.sun_path, sizeof silent.sun_path - 1);
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&silent), sizeof silent), 0);
    ASSERT_EQ(listen(listener, 1), 0);
    for (const std::string& address :
         {std::string(), std::string(";"), "unix:path=" + (folder / "none").string(),
          empty.address(), "unix:path=" + (folder / "silent").string()}) {
        const EnvironmentVariable bus(busVariable, address);
        ProcessActivity::begin(Options::userInitiated, "work").end();
    }
    close(listener);
}
