// Helper tools that listen with the kit, and clients of theirs that mean well or ill, on a message
// bus of their own.

#include "CorbelKit/Services/RunTool.h"
#include "CorbelKit/Services/XPCListener.h"
#include "Tests/Support/EventLog.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Testing.h"

#include <future>

using namespace TestSupport;

namespace {

using CorbelKit::NoReply;
using CorbelKit::XPCConnection;
using CorbelKit::XPCListener;
using Platform::CallRefusal;
using Platform::ConnectionError;
using Platform::ConnectionListener;
using Platform::MachServiceName;
using Platform::PropertyList;
using Platform::ServiceName;
using testing::ElementsAre;
using Kind = ConnectionError::Kind;

const std::string helperName = "com.example.My-Helper";

class Listener : public testing::Test {
protected:
    /// "answered", or the kind of the failure and the name of the helper's error.
    static std::string described(const auto& reply) {
        if (reply)
            return "answered";
        return std::to_string(static_cast<int>(reply.error().kind)) + " " + reply.error().name;
    }

    template <class... Arguments>
    static std::string outcome(XPCConnection& connection, const std::string& method,
                               const Arguments&... arguments) {
        std::promise<std::string> promise;
        connection.call<NoReply>(
            method, [&promise](const auto& reply) { promise.set_value(described(reply)); },
            arguments...);
        return promise.get_future().get();
    }

    static std::string failure(Kind kind, const std::string& name = {}) {
        return std::to_string(static_cast<int>(kind)) + " " + name;
    }

    static std::string refusal(const std::string& name) { return failure(Kind::refused, name); }

    /// Keeps what it is asked until the test lets go of it.
    void hold() {
        holding.setInvalidationHandler([this](const auto& reason) { record.add(reason); });
        holding.resume();
        client.resume();
    }

    std::size_t held() {
        const std::lock_guard lock(mutex);
        return replies.size();
    }

    BusDaemon bus;
    EnvironmentVariable session{"DBUS_SESSION_BUS_ADDRESS", bus.address()};
    std::mutex mutex;
    std::vector<ConnectionListener::Reply> replies; // mutex
    EventLog record;
    ConnectionListener holding{
        MachServiceName{.name = helperName}, [this](const auto& call, const auto& reply) {
            const std::lock_guard lock(mutex);
            if (call.method == "hold") {
                replies.push_back(reply);
            } else if (call.method == "echo") {
                reply(call.arguments.at(0));
            } else if (call.method != "drop") {
                reply(CallRefusal{.name = call.method, .description = "\xFF"});
            }
        }};
    XPCConnection client{ServiceName{helperName}};
};

using HelperTool = Listener;

TEST_F(HelperTool, AnswersTypedCallsAndRefusesOthersByTheirNames) {
    using Size = XPCListener::Answer<int>;
    XPCListener listener(MachServiceName{.name = helperName});
    listener.add("add", std::function([](int one, const std::optional<int>& other) -> Size {
                     return other ? Size(one + *other)
                                  : CallRefusal{.name = "org.example.Error", .description = "no"};
                 }));
    listener.resume();
    // Called before the name is taken, a helper is not there.
    client.resume();
    EXPECT_TRUE(waitUntil([&] { return outcome(client, "add", 1, 2) == "answered"; }));
    std::promise<int> sum;
    client.call<int>("add", [&sum](const auto& reply) { sum.set_value(*reply); }, 1, 2);
    EXPECT_EQ(sum.get_future().get(), 3);
    EXPECT_EQ(outcome(client, "add", 1, std::optional<int>()), refusal("org.example.Error"));
    EXPECT_EQ(outcome(client, "add", 1), refusal(XPCListener::badArguments));
    EXPECT_EQ(outcome(client, "add", "x", 2), refusal(XPCListener::badArguments));
    EXPECT_EQ(outcome(client, "subtract", 1, 2), refusal(XPCListener::noSuchMethod));
}

TEST_F(Listener, AnswersEachCallOnceWhateverItsHandlerMakesOfIt) {
    hold();
    EXPECT_TRUE(waitUntil([&] { return outcome(client, "echo", 1) == "answered"; }));
    EXPECT_EQ(outcome(client, "drop"), refusal(CallRefusal::Name::noAnswer));
    EXPECT_EQ(outcome(client, "no_name"), refusal(CallRefusal::Name::refused));
    client.limit = std::chrono::milliseconds(50);
    EXPECT_EQ(outcome(client, "hold"), failure(Kind::timedOut));
    client.limit = Platform::noLimit;
    for (const auto& value : {PropertyList(PropertyList::Array(1)), PropertyList(1)})
        replies.front()(value); // too late, and once more
    replies.clear();
    std::promise<std::string> bad;
    client.call<NoReply>("hold", [&bad](const auto& reply) { bad.set_value(described(reply)); });
    EXPECT_TRUE(waitUntil([&] { return held() == 1; }));
    replies.front()(PropertyList(PropertyList::Array(1))); // null within an array
    EXPECT_EQ(bad.get_future().get(), refusal(CallRefusal::Name::badAnswer));
}

TEST_F(Listener, RefusesWhatOneClientSendsBeyondItsShareAndServesTheOthers) {
    hold();
    ASSERT_TRUE(waitUntil([&] { return outcome(client, "echo", 1) == "answered"; }));
    constexpr int calls = 2000;
    std::atomic<int> busy = 0;
    std::atomic<int> refused = 0; // also by the bus, which has a limit of its own
    XPCConnection flood{ServiceName{helperName}};
    for (int i = 0; i < calls; ++i) {
        flood.call<NoReply>("hold", [&](const auto& reply) {
            busy += described(reply) == refusal(CallRefusal::Name::busy) ? 1 : 0;
            ++refused;
        });
    }
    flood.resume();
    EXPECT_TRUE(waitUntil([&] { return refused == calls - 16; })) << refused;
    EXPECT_EQ(held(), 16);
    EXPECT_GT(busy, 0);
    EXPECT_EQ(outcome(client, "echo", 1), "answered");
    flood.invalidate();
    replies.clear(); // nobody is there any more
    EXPECT_EQ(outcome(client, "echo", 1), "answered");
}

TEST_F(Listener, RefusesWhatNoConnectionSends) {
    hold();
    ASSERT_TRUE(waitUntil([&] { return outcome(client, "echo", 1) == "answered"; }));
    const auto send = [&](const std::string& method, const std::vector<std::string>& arguments) {
        std::vector<std::string> command = {"--bus=" + bus.address(), "--print-reply",
                                            "--dest=" + helperName, "/com/example/My_Helper",
                                            "com.example." + method};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return CorbelKit::runTool(command, "/usr/bin/dbus-send", CorbelKit::SendNewline::no);
    };
    EXPECT_THAT(send("My_Helper.echo", {"dict:int32:string:1,one"}),
                testing::HasSubstr("InvalidArgs"));
    EXPECT_THAT(send("My_Helper.echo", std::vector<std::string>(33, "int32:1")),
                testing::HasSubstr(CallRefusal::Name::badCall));
    EXPECT_THAT(send("Other.echo", {"int32:1"}), testing::HasSubstr("UnknownMethod"));
    EXPECT_EQ(outcome(client, "echo", 1), "answered");
}

TEST_F(Listener, SaysWhyItCannotListen) {
    hold();
    ASSERT_TRUE(waitUntil([&] { return outcome(client, "echo", 1) == "answered"; }));
    ConnectionListener second{MachServiceName{.name = helperName}, nullptr};
    std::promise<std::string> reason;
    second.setInvalidationHandler([&reason](auto text) { reason.set_value(std::move(text)); });
    second.resume();
    EXPECT_EQ(reason.get_future().get(), "another process has the name " + helperName);
    bus.end();
    EXPECT_THAT(record.after(1), ElementsAre("the message bus went away"));
}

} // namespace
