// The room for message buses by itself. What its users make of it is tested with them.

#include "Platform/Linux/Bus/BusAddress.h"
#include "Platform/Linux/Bus/BusNames.h"
#include "Tests/Platform/Linux/ConnectedBus.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/NotificationService.h"
#include "Tests/Support/Testing.h"

#include <future>

using namespace Platform;

namespace {

using Outcome = BusReply::Outcome;
using Services = TestSupport::BusDaemon::ActivatableServices;
using testing::ElementsAre;
using namespace TestSupport;

constexpr auto name = NotificationService::standardName;

class Bus : public testing::Test {
protected:
    static BusDeadline in(int seconds) { return busDeadlineIn(std::chrono::seconds(seconds)); }

    // Signals that came before its answer have been handed to their queues.
    void settle() {
        EXPECT_EQ(connection->callAndWait(busDriverMethod("GetId", "s"), {}, in(20)).outcome,
                  Outcome::answered);
        std::promise<void> handedOut;
        queue.async([&handedOut] { handedOut.set_value(); });
        handedOut.get_future().get();
    }

    TestSupport::BusDaemon daemon{Services{{"com.example.Silent", "/bin/sleep 60"}}};
    std::shared_ptr<BusConnection> connection = connectedBus(daemon.address());
    const DispatchQueue queue = DispatchQueue::serial("tests");
};

} // namespace

TEST_F(Bus, IsReachedAtTheFirstOfItsPlacesThatTakesUsAndStartsNothing) {
    EXPECT_THAT(busPlaces("unixexec:path=/bin/false;unix:path=/a%20b;tcp:host=h;;unix:abstract=c"),
                ElementsAre("unix:path=/a%20b", "unix:abstract=c"));
    for (const std::string nowhere : {"", "autolaunch:", "unix:path=/none", "unix:", "unix"})
        EXPECT_FALSE(connectedBus(nowhere)) << nowhere;
    EXPECT_TRUE(connectedBus("unix:path=/none;" + daemon.address()));
}

TEST_F(Bus, EndsEveryCallInAWayThatIsTyped) {
    NotificationService service(daemon.address());
    const auto call = [&](const std::string& destination, const std::string& method,
                          const std::string& type, BusDeadline deadline) {
        return connection
            ->callAndWait({.destination = destination,
                           .path = "/org/freedesktop/Notifications",
                           .interface = name,
                           .name = method,
                           .replyType = type,
                           .mayStart = true},
                          {}, deadline)
            .outcome;
    };
    EXPECT_EQ(call(name, "GetCapabilities", "as", in(20)), Outcome::answered);
    EXPECT_EQ(call(name, "GetCapabilities", "s", in(20)), Outcome::unreadable);
    EXPECT_EQ(call(name, "Nothing", "", in(20)), Outcome::refused);
    EXPECT_EQ(call("com.example.Nobody", "Any", "", in(20)), Outcome::gone);
    EXPECT_EQ(call("no name", "Any", "", in(20)), Outcome::unsent);
    EXPECT_EQ(call("com.example.Silent", "Any", "", busDeadlineIn(std::chrono::milliseconds(20))),
              Outcome::late);
    std::promise<std::string> closed;
    connection->whenClosed(queue, [&closed](const auto& reason) { closed.set_value(reason); });
    auto pending =
        std::async(std::launch::async, call, "com.example.Silent", "Any", "", BusDeadline::max());
    daemon.end();
    EXPECT_EQ(pending.get(), Outcome::closed);
    EXPECT_NE(closed.get_future().get(), "");
    EXPECT_EQ(call(name, "GetCapabilities", "as", in(20)), Outcome::closed);
    EXPECT_TRUE(connection->isClosed());
}

TEST_F(Bus, GivesNoSignalOnceTheSubscriptionIsDropped) {
    NotificationService service(daemon.address());
    std::vector<std::string> kept; // queue
    std::vector<std::string> dropped;
    const BusSignalRule rule{.sender = name,
                             .path = "/org/freedesktop/Notifications",
                             .interface = name,
                             .name = "ActionInvoked"};
    const auto keeps = connection->subscribe(rule, queue, [&kept](const BusSignal& signal) {
        kept.push_back(*signal.values[1].get<std::string>());
    });
    std::unique_ptr<BusSubscription> drops;
    drops = connection->subscribe(rule, queue, [&](const BusSignal& signal) {
        dropped.push_back(*signal.values[1].get<std::string>());
        drops.reset();
    });
    settle();
    for (const auto* const key : {"one", "two", "three"})
        service.emitActionInvoked(1, key);
    service.emitNotificationClosed(1, 1);
    EXPECT_TRUE(waitUntil([&] {
        settle();
        return kept.size() == 3;
    }));
    EXPECT_THAT(kept, ElementsAre("one", "two", "three"));
    EXPECT_THAT(dropped, ElementsAre("one"));
}

TEST_F(Bus, TakesNewsOfNamesFromTheBusAlone) {
    std::vector<std::string> owners; // queue
    const BusNameWatch watch(*connection, name, queue,
                             [&owners](const std::string& owner) { owners.push_back(owner); });
    settle();
    EXPECT_THAT(owners, ElementsAre(""));
    const NotificationService service(daemon.address());
    EXPECT_TRUE(waitUntil([&] {
        settle();
        return owners.size() == 2;
    }));
    for (const std::string pretended : {"", ":1.1"}) {
        ChildProcess({"dbus-send", "--bus=" + daemon.address(), std::string("--dest=") + name,
                      "--type=signal", "/org/freedesktop/DBus",
                      "org.freedesktop.DBus.NameOwnerChanged", std::string("string:") + name,
                      "string:" + owners[1], "string:" + pretended})
            .readAll();
    }
    settle();
    EXPECT_EQ(owners.size(), 2);
}
