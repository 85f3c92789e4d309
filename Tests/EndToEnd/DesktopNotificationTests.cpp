// The agent on a session bus of its own: files in, calls of the notification service out.

#include "Tests/EndToEnd/AgentTest.h"
#include "Tests/Support/Linux/BusDaemon.h"

using namespace testing;
using namespace TestSupport;

namespace {

class DesktopNotification : public AgentTest {
protected:
    DesktopNotification() { trial.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address(); }

    BusDaemon bus;
};

TEST_F(DesktopNotification, GivesTheServiceAllThatItHasToKnowAndRests) {
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
    expectNext("no more today");
    service.setManner(NotificationService::Manner::answers);
    EXPECT_EQ(shown(service, "x.plist").replaces, 0U);
}

TEST_F(DesktopNotification, GoesToTheTerminalUntilAServiceAppears) {
    start();
    save("x.plist");
    expectNext("New: " + agents + "x.plist");
    NotificationService service(bus.address());
    shown(service, "y.plist");
    service.vanish();
    save("z.plist");
    expectNext("New: " + agents + "z.plist");
}

TEST_F(DesktopNotification, FindsTheBusInTheUsersRuntimeFolder) {
    NotificationService service(bus.address());
    trial.environment.erase("DBUS_SESSION_BUS_ADDRESS");
    trial.environment["XDG_RUNTIME_DIR"] = bus.socket().parent_path();
    start();
    shown(service, "x.plist");
}

TEST_F(DesktopNotification, IsNotHeldUpByAnActivationThatHangs) {
    const BusDaemon slow(
        BusDaemon::ActivatableServices{{NotificationService::standardName, "/bin/sleep 20"}});
    trial.environment["DBUS_SESSION_BUS_ADDRESS"] = slow.address();
    start();
    save("x.plist");
    save("y.plist");
    expectNext("New: " + agents + "x.plist");
    expectNext("New: " + agents + "y.plist");
    EXPECT_EQ(trial.end(), EXIT_SUCCESS);
}

TEST_F(DesktopNotification, ASecondAgentOfTheSessionLeavesItToTheFirst) {
    start();
    const ChildProcess second({"sh", "-c", "\"$0\"; echo $?", CORBEL_AGENT},
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
