// The agent on a session bus of its own: files in, calls of the notification service out.

#include "Tests/EndToEnd/AgentTest.h"
#include "Tests/Support/Linux/BusDaemon.h"

#include <sys/wait.h>

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
    EXPECT_EQ(call.icon, "com.tarnwell.VesperPro10");
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
    EXPECT_FALSE(service.next(std::chrono::milliseconds(5500))); // as long as a bus may take
    service.setManner(NotificationService::Manner::answers);
    service.answerHeld();
    EXPECT_EQ(next(service).replaces, 1U);
}

TEST_F(DesktopNotification, LeavesTheServiceSixteenUnansweredUntilTheEndAndTheRestInOrder) {
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
    for (int number = 0; number < mostUnanswered; ++number)
        trial.save(job(std::to_string(number)), "again" + std::to_string(number));
    ASSERT_TRUE(trial.waitUntilAtRest());
    expectToEnd();
    for (int number = 0; number < mostUnanswered; ++number)
        EXPECT_TRUE(service.next(std::chrono::seconds(1)));
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

TEST_F(DesktopNotification, WaitsForAServiceThatTakesLongToStart) {
    // One that takes longer than the bus would wait for an answer, one that another starts, and one
    // of a desktop that the bus knows nothing of.
    for (const auto& [command, delay] :
         {std::pair("/bin/sleep 60", 6), std::pair("/bin/false", 1), std::pair("", 1)}) {
        const auto* const name =
            *command == '\0' ? "org.example" : NotificationService::standardName;
        const BusDaemon slow(BusDaemon::ActivatableServices{{name, command}});
        trial.environment["XDG_CURRENT_DESKTOP"] = *command == '\0' ? "X" : "";
        trial.environment["DBUS_SESSION_BUS_ADDRESS"] = slow.address();
        start();
        save("x.plist");
        save("y.plist");
        EXPECT_FALSE(trial.nextLine(std::chrono::seconds(delay)));
        {
            NotificationService service(slow.address());
            EXPECT_THAT(next(service).body, EndsWith("x.plist"));
            EXPECT_THAT(next(service).body, EndsWith("y.plist"));
            shown(service, "z.plist");
        }
        save("z.plist");
        EXPECT_FALSE(trial.nextLine(std::chrono::seconds(1)));
        expectToEnd();
        expectNext("Modified: " + agents + "z.plist"); // at the end
    }
}

TEST_F(DesktopNotification, WaitsForABusThatComesLate) {
    const auto socket = trial.home() / "bus";
    trial.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + socket.string();
    start();
    save("x.plist");
    EXPECT_FALSE(trial.nextLine(std::chrono::seconds(2)));
    NotificationService service(bus.address());
    fs::create_symlink(bus.socket(), socket);
    EXPECT_EQ(next(service).body, "New: " + agents + "x.plist");
}

// In one of the rounds at least the pass is over and the notification not yet due.
TEST_F(DesktopNotification, IsDeliveredWhenTheAgentEndsBeforeItIsDue) {
    NotificationService service(bus.address());
    bool isDelivered = false;
    for (int round = 0; round < 4 && !isDelivered; ++round) {
        start();
        save("x.plist");
        EXPECT_FALSE(trial.nextLine(std::chrono::milliseconds(650)));
        expectToEnd();
        isDelivered = service.next(std::chrono::milliseconds(0)).has_value();
    }
    EXPECT_TRUE(isDelivered);
}

TEST_F(DesktopNotification, ANewAgentTakesOverFromOneThatIsAskedToEnd) {
    start();
    for (int round = 0; round < 15; ++round) {
        const auto former = trial.process();
        kill(former, SIGTERM);
        ASSERT_TRUE(trial.start());
        int status = -1;
        EXPECT_EQ(waitpid(former, &status, 0), former);
        EXPECT_EQ(status, 0);
    }
}

} // namespace
