// The agent on a session bus of its own: files in, calls of the notification service out.

#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/ChildProcess.h"
#include "Tests/Support/Linux/NotificationService.h"
#include "Tools/AgentTrial.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace {

using namespace ::testing;
using TestSupport::BusDaemon;
using TestSupport::NotificationService;
namespace fs = std::filesystem;

const std::string agents = "~/Library/LaunchAgents/";

class DesktopNotification : public ::testing::Test {
protected:
    void start() {
        trial.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
        ASSERT_TRUE(trial.start());
    }

    fs::path job(const std::string& name) const { return trial.userAgents() / name; }

    void save(const std::string& name) { trial.save(job(name), std::to_string(++saves)); }

    void expectNextLine(const std::string& end) {
        const auto line = trial.nextLine();
        ASSERT_TRUE(line) << "nothing was printed, expected " << end;
        EXPECT_THAT(line->text, EndsWith(end));
    }

    // What the service is asked to show next.
    static TestSupport::NotifyCall next(NotificationService& service) {
        const auto call = service.next();
        EXPECT_TRUE(call) << "no notification";
        return call.value_or(TestSupport::NotifyCall());
    }

    // Saves the file and gives what the service is then asked to show.
    TestSupport::NotifyCall shown(NotificationService& service, const std::string& name) {
        save(name);
        auto call = next(service);
        EXPECT_TRUE(call.body.ends_with(name)) << call.body;
        return call;
    }

    BusDaemon bus;
    Tools::AgentTrial trial{CORBEL_AGENT};
    int saves = 0;
};

TEST_F(DesktopNotification, TellsTheServiceAllThatItHasToKnowAndRests) {
    NotificationService service(bus.address(), {"actions", "body", "body-markup"});
    start();
    save("a<b>&c");
    const auto call = next(service);
    EXPECT_EQ(call.applicationName, "Vesper Pro Agent");
    EXPECT_EQ(call.replaces, 0U);
    EXPECT_EQ(call.icon, "");
    EXPECT_EQ(call.summary, "Vesper Pro noticed a change");
    EXPECT_EQ(call.body, "New: " + agents + "a&lt;b&gt;&amp;c");
    EXPECT_THAT(call.actions, ElementsAre("default", "", "ShowAction", "Show"));
    EXPECT_THAT(call.hints,
                UnorderedElementsAre(Pair("desktop-entry", "'com.tarnwell.VesperProAgent'"),
                                     Pair("category", "'x-tarnwell.VesperAgent'"),
                                     Pair("urgency", "0x01")));
    EXPECT_EQ(call.lifetime, -1);
    EXPECT_TRUE(trial.waitUntilAtRest());
}

TEST_F(DesktopNotification, ReplacesWhatIsStillShownForTheSameIdentifier) {
    NotificationService service(bus.address());
    start();
    const auto added = shown(service, "x.plist");
    shown(service, "y.plist");
    EXPECT_EQ(shown(service, "x.plist").replaces, added.number);

    fs::remove(job("x.plist"));
    const auto deleted = next(service);
    EXPECT_EQ(deleted.replaces, 0U);
    fs::remove(job("y.plist"));
    EXPECT_EQ(next(service).replaces, deleted.number);

    service.emitNotificationClosed(deleted.number, 2);
    shown(service, "z.plist");
    fs::remove(job("z.plist"));
    EXPECT_EQ(next(service).replaces, 0U);
}

TEST_F(DesktopNotification, WaitsForTheNumberOfWhatItReplaces) {
    NotificationService service(bus.address());
    service.setManner(NotificationService::Manner::holds);
    start();
    shown(service, "x.plist");
    save("x.plist");
    shown(service, "y.plist"); // held up by nothing, though it was saved after
    service.setManner(NotificationService::Manner::answers);
    service.answerHeld();
    EXPECT_EQ(next(service).replaces, 1U);
}

TEST_F(DesktopNotification, LeavesTheServiceSixteenUnansweredAndTheRestInOrder) {
    constexpr int mostUnanswered = 16, all = 20;
    NotificationService service(bus.address());
    service.setManner(NotificationService::Manner::holds);
    start();
    for (int number = 0; number < all; ++number)
        trial.save(job(std::to_string(number)), std::to_string(number));
    for (int number = 0; number < mostUnanswered; ++number)
        ASSERT_TRUE(service.next());
    EXPECT_TRUE(trial.waitUntilAtRest());
    EXPECT_FALSE(service.next(std::chrono::milliseconds(0)));
    service.answerHeld();
    for (int number = mostUnanswered; number < all; ++number)
        EXPECT_TRUE(service.next());
}

TEST_F(DesktopNotification, AsksEachOwnerOfTheNameWhatItCanDo) {
    NotificationService service(bus.address(), {"body"});
    start();
    EXPECT_THAT(shown(service, "a&b").actions, IsEmpty());

    service.vanish();
    service.comeBack({"actions", "body", "body-markup"});
    save("a&b");
    const auto rich = next(service);
    EXPECT_EQ(rich.body, "Modified: " + agents + "a&amp;b");
    EXPECT_EQ(rich.replaces, 0U) << "a number that the former owner gave";
    EXPECT_FALSE(rich.actions.empty());
}

TEST_F(DesktopNotification, HandsToTheNextOwnerWhatTheLastOneDidNotAnswer) {
    NotificationService service(bus.address());
    service.setManner(NotificationService::Manner::holds);
    NotificationService successor(bus.address());
    start();
    shown(service, "x.plist");
    service.vanish();
    EXPECT_EQ(next(successor).body, "New: " + agents + "x.plist");
}

TEST_F(DesktopNotification, PrintsARefusalAndGoesOn) {
    NotificationService service(bus.address());
    service.setManner(NotificationService::Manner::refuses);
    start();
    shown(service, "x.plist");
    expectNextLine("no more today");
    service.setManner(NotificationService::Manner::answers);
    EXPECT_EQ(shown(service, "x.plist").replaces, 0U);
}

TEST_F(DesktopNotification, GoesToTheTerminalUntilAServiceAppears) {
    start();
    save("x.plist");
    expectNextLine("New: " + agents + "x.plist");
    NotificationService service(bus.address());
    shown(service, "y.plist");
    service.vanish();
    save("z.plist");
    expectNextLine("New: " + agents + "z.plist");
}

TEST_F(DesktopNotification, FindsTheBusInTheUsersRuntimeFolder) {
    NotificationService service(bus.address());
    const std::string prefix = "unix:path=";
    const fs::path socket =
        bus.address().substr(prefix.size(), bus.address().find(',') - prefix.size());
    trial.environment["XDG_RUNTIME_DIR"] = socket.parent_path();
    ASSERT_TRUE(trial.start());
    shown(service, "x.plist");
}

TEST_F(DesktopNotification, IsNotHeldUpByAnActivationThatHangs) {
    const BusDaemon slow(
        BusDaemon::ActivatableServices{{NotificationService::standardName, "/bin/sleep 20"}});
    trial.environment["DBUS_SESSION_BUS_ADDRESS"] = slow.address();
    ASSERT_TRUE(trial.start());
    save("x.plist");
    save("y.plist");
    expectNextLine("New: " + agents + "x.plist");
    expectNextLine("New: " + agents + "y.plist");
    EXPECT_EQ(trial.end(), EXIT_SUCCESS);
}

TEST_F(DesktopNotification, ASecondAgentOfTheSessionLeavesItToTheFirst) {
    start();
    const TestSupport::ChildProcess second({"sh", "-c", "\"$0\"; echo $?", CORBEL_AGENT},
                                           {"DBUS_SESSION_BUS_ADDRESS=" + bus.address()});
    EXPECT_EQ(second.readAll(), "Vesper Pro Agent is already running.\n0\n");
}

TEST_F(DesktopNotification, TheEndOfTheBusIsTheEndOfTheSession) {
    start();
    bus.end();
    EXPECT_FALSE(trial.nextLine());
    EXPECT_EQ(trial.end(0), EXIT_SUCCESS);
}

} // namespace
