// Connections to a helper that is a process of its own, on a message bus of its own.

#include "CorbelKit/Services/XPCConnection.h"
#include "Tests/Support/EventLog.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Testing.h"

#include <future>

using namespace TestSupport;

namespace {

using CorbelKit::NoReply;
using CorbelKit::XPCConnection;
using Platform::ConnectionError;
using Platform::MachServiceName;
using Platform::PropertyList;
using Platform::ServiceName;
using testing::ElementsAre;
using Kind = ConnectionError::Kind;

constexpr auto invalidation = "invalidation";
const std::string helperName = "com.example.My-Helper";
const std::string helperTool = CORBEL_BINARY_DIR "/Tests/Support/HelperTool";

std::string failure(Kind kind) {
    return "failed " + std::to_string(static_cast<int>(kind));
}

template <class Reply, class... Arguments>
Platform::Expected<Reply, ConnectionError>
callAndWait(XPCConnection& connection, const std::string& method, const Arguments&... arguments) {
    std::promise<Platform::Expected<Reply, ConnectionError>> promise;
    connection.call<Reply>(
        method, [&promise](auto reply) { promise.set_value(std::move(reply)); }, arguments...);
    return promise.get_future().get();
}

std::unique_ptr<ChildProcess> startHelper(const std::vector<std::string>& place) {
    std::vector<std::string> command = {helperTool};
    command.insert(command.end(), place.begin(), place.end());
    auto helper = std::make_unique<ChildProcess>(command);
    EXPECT_EQ(helper->readLine(), "ready");
    return helper;
}

class Helper : public testing::Test {
protected:
    void observe(Platform::Connection& connection) {
        connection.setInterruptionHandler([this] { record.add("interruption"); });
        connection.setInvalidationHandler([this] { record.add(invalidation); });
    }

    XPCConnection::ReplyCompletion<NoReply> outcome() {
        return [this](const auto& reply) {
            record.add(reply ? "answered" : failure(reply.error().kind));
        };
    }

    TemporaryFolder folder;
    EventLog record;
};

class HelperOnABus : public Helper {
protected:
    std::unique_ptr<ChildProcess> start() const {
        return startHelper({"bus", bus.address(), helperName});
    }

    BusDaemon bus;
    EnvironmentVariable session{"DBUS_SESSION_BUS_ADDRESS", bus.address()};
};

} // namespace

TEST_F(HelperOnABus, AnswersWithTypedValues) {
    const auto helper = start();
    XPCConnection connection{ServiceName{helperName}};
    connection.resume();
    using Dates = std::map<std::string, PropertyList::Date, std::less<>>;
    const Dates dates = {{"past", PropertyList::Date(std::chrono::duration<double>(-0.5))}};
    EXPECT_EQ(*callAndWait<Dates>(connection, "echo", dates), dates);
    const PropertyList::Data data(3, std::byte{0});
    using Numbers = std::vector<std::optional<double>>;
    const Numbers numbers = {1.5, std::nullopt};
    EXPECT_EQ(*callAndWait<Numbers>(connection, "echo", numbers), numbers);
    EXPECT_EQ(*callAndWait<std::string>(connection, "typeOf", true, 1, "x", ~std::uint64_t{0}, data,
                                        dates, numbers),
              "(bxstaya{sv}av)");
    EXPECT_TRUE(callAndWait<NoReply>(connection, "echo"));
}

TEST_F(HelperOnABus, TakesNaturalTypesAndRefusesWhatHasNoMeaning) {
    const auto helper = start();
    XPCConnection connection{ServiceName{helperName}};
    connection.resume();
    std::promise<PropertyList> natural;
    connection.call("natural", PropertyList::Array(),
                    [&natural](auto reply) { natural.set_value(*reply); });
    using Array = PropertyList::Array;
    using std::string;
    const Array texts = {string("a"), string("b")};
    const Array tuple = {1, string("x")};
    const PropertyList::Dictionary dictionary{{"k", Array{true}}};
    const Array expected = {1, -2, 3, 4, texts, string("/o"), tuple, dictionary, ~std::uint64_t{0}};
    EXPECT_EQ(natural.get_future().get(), PropertyList(expected));
    for (const std::string method : {"several", "numberedKeys", "deep"}) {
        const auto reply = callAndWait<NoReply>(connection, method);
        EXPECT_TRUE(!reply && reply.error().kind == Kind::badReply) << method;
    }
    const auto refusal = callAndWait<NoReply>(connection, "refuse");
    ASSERT_FALSE(refusal);
    EXPECT_EQ(refusal.error().kind, Kind::refused);
    EXPECT_EQ(refusal.error().description, "not today");
}

TEST_F(HelperOnABus, InterruptsOnceWhenKilledAndReachesTheSuccessor) {
    auto helper = start();
    XPCConnection connection{MachServiceName{.name = helperName}};
    observe(connection);
    connection.resume();
    ASSERT_TRUE(callAndWait<NoReply>(connection, "echo"));
    connection.call<NoReply>("wait", outcome());
    helper->readLine();
    helper->end(SIGKILL);
    EXPECT_TRUE(record.reaches(2));

    EXPECT_EQ(callAndWait<NoReply>(connection, "echo").error().kind, Kind::interrupted);
    helper = start();
    EXPECT_TRUE(callAndWait<NoReply>(connection, "echo"));
    EXPECT_THAT(record.events(), ElementsAre(failure(Kind::interrupted), "interruption"));
    const auto next = start(); // stands in line for the name
    helper->end(SIGKILL);      // which is reported also when no call is under way
    EXPECT_TRUE(record.reaches(3));
    EXPECT_TRUE(callAndWait<NoReply>(connection, "echo"));
}

TEST_F(HelperOnABus, InvalidatesOnceWhenTheBusGoes) {
    const auto helper = start();
    const EnvironmentVariable system("DBUS_SYSTEM_BUS_ADDRESS", bus.address());
    const EnvironmentVariable noSession("DBUS_SESSION_BUS_ADDRESS", "unix:path=/none");
    XPCConnection connection{
        MachServiceName{.name = helperName, .options = MachServiceName::Options::privileged}};
    observe(connection);
    connection.call<NoReply>("wait", outcome());
    connection.resume();
    helper->readLine();
    bus.end();
    EXPECT_TRUE(waitUntil(
        [&] { return record.events().size() > 1 && record.events().back() == invalidation; }));
    EXPECT_EQ(callAndWait<NoReply>(connection, "echo").error().kind, Kind::invalidated);
    EXPECT_EQ(std::ranges::count(record.events(), invalidation), 1);
}

TEST_F(Helper, IsReachedWithoutABusAndAgainAfterItsEnd) {
    const auto address = "unix:path=" + (folder / "helper").string();
    auto helper = startHelper({"peer", address});
    XPCConnection connection{Platform::ListenerEndpoint(address)};
    observe(connection);
    connection.resume();
    EXPECT_EQ(*callAndWait<int>(connection, "echo", 7), 7);
    connection.call<NoReply>("wait", outcome());
    helper->readLine();
    helper->end(SIGKILL);
    EXPECT_TRUE(record.reaches(2));
    fs::remove(folder / "helper");
    helper = startHelper({"peer", address});
    EXPECT_EQ(*callAndWait<int>(connection, "echo", 8), 8);
    helper->end(SIGKILL);
    EXPECT_TRUE(record.reaches(3));
    EXPECT_EQ(callAndWait<int>(connection, "echo", 9).error().kind, Kind::invalidated);
    EXPECT_TRUE(record.reaches(4));
    EXPECT_THAT(record.events(), ElementsAre(failure(Kind::interrupted), "interruption",
                                             "interruption", invalidation));
}

TEST_F(HelperOnABus, IsInvalidWhereNobodyCanBe) {
    const auto nowhere = [](auto&&... place) {
        auto connection = std::make_shared<XPCConnection>(place...);
        std::promise<void> invalidated;
        connection->setInvalidationHandler([&invalidated] { invalidated.set_value(); });
        connection->resume();
        invalidated.get_future().get();
    };
    nowhere();
    nowhere(ServiceName{"Vesper Pro Action.xpc"});
    nowhere(ServiceName{":1.1"});
    nowhere(Platform::ListenerEndpoint("unix:path=/none"));
    nowhere(Platform::ListenerEndpoint("no address"));
}

TEST_F(HelperOnABus, LeavesNoDescriptorBehind) {
    const auto helper = start();
    const auto useOne = [] {
        XPCConnection connection{ServiceName{helperName}};
        connection.resume();
        EXPECT_TRUE(callAndWait<NoReply>(connection, "echo"));
        connection.call<NoReply>("wait", {});
        XPCConnection early{ServiceName{helperName}};
        early.resume(); // ends before it has connected
    };
    useOne(); // starts what stays for the life of the process
    std::ptrdiff_t before = openDescriptors();
    waitUntil([&] { return std::exchange(before, openDescriptors()) == before; });
    for (int round = 0; round < 20; ++round)
        useOne();
    EXPECT_TRUE(waitUntil([&] { return openDescriptors() <= before; })) << openDescriptors();
}
