// What a connection makes of what its system reports. The system's half is a scripted one, linked
// in place of the platform's: no helper says the same thing twice, or too late, on request.

#include "Platform/Connection.h"
#include "Platform/DispatchQueue.h"
#include "Platform/Native/NativeConnection.h"
#include "Tests/Support/EventLog.h"

#include <gmock/gmock.h>

#include <thread>

using namespace Platform;

namespace {

/// The far side of the connection that was made last.
struct FarSide {
    NativeConnection::Events events;
    std::mutex mutex;
    std::vector<std::uint64_t> calls; // mutex

    std::vector<std::uint64_t> called() {
        const std::lock_guard lock(mutex);
        return calls;
    }
};

std::shared_ptr<FarSide> farSide;

} // namespace

namespace Platform {

class NativeConnection::Impl {
public:
    std::shared_ptr<FarSide> far = farSide;
};

NativeConnection::NativeConnection(const ConnectionAddress& /*address*/, Events events)
    : impl_(std::make_unique<Impl>()) {
    farSide->events = std::move(events);
}

NativeConnection::~NativeConnection() = default;

// NOLINTBEGIN(performance-unnecessary-value-param): the real one keeps them
void NativeConnection::call(std::uint64_t number, std::string /*method*/,
                            PropertyList::Array /*arguments*/, CallLimit /*limit*/) {
    // NOLINTEND(performance-unnecessary-value-param)
    const std::lock_guard lock(impl_->far->mutex);
    impl_->far->calls.push_back(number);
}

} // namespace Platform

namespace {

using Kind = ConnectionError::Kind;
using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::waitUntil;

class ConnectionTest : public testing::Test {
protected:
    Connection::Completion outcome(const std::string& name) {
        return [this, name](const ConnectionReply& reply) {
            constexpr const char* kinds[] = {"interrupted", "invalidated", "refused",
                                             "badReply",    "badCall",     "timedOut"};
            record.add(name + " " +
                       (reply ? "answered" : kinds[static_cast<int>(reply.error().kind)]));
        };
    }

    void observe(Connection& observed) {
        observed.setInterruptionHandler([this] { record.add("interruption"); });
        observed.setInvalidationHandler([this] { record.add("invalidation"); });
    }

    std::shared_ptr<FarSide> far = farSide = std::make_shared<FarSide>();
    std::shared_ptr<Connection> connection = std::make_shared<Connection>(ServiceName{"com.a"});
    TestSupport::EventLog record;
};

} // namespace

TEST_F(ConnectionTest, HoldsEverythingBackWhileSuspendedAndKeepsItsOrder) {
    observe(*connection);
    connection->call("m", {}, outcome("1"));
    connection->suspend();
    connection->resume();
    EXPECT_THAT(far->called(), IsEmpty());
    connection->resume();
    connection->resume(); // one too many
    EXPECT_THAT(far->called(), ElementsAre(1));
    connection->suspend();
    connection->call("m", {}, outcome("2"));
    connection->call("m", {}, outcome("3"));
    EXPECT_THAT(far->called(), ElementsAre(1, 2, 3));
    far->events.replied(2, PropertyList());
    far->events.interrupted("");
    connection->call("m", {}, outcome("4"));
    far->events.replied(4, PropertyList());
    far->events.invalidated("");
    connection->call("m", {}, outcome("5"));
    Connection other{ServiceName{"com.b"}};
    other.invalidate();
    other.call("m", {}, outcome("other"));
    EXPECT_THAT(record.after(1), ElementsAre("other invalidated"));
    connection->resume();
    EXPECT_THAT(record.after(8),
                ElementsAre("other invalidated", "2 answered", "1 interrupted", "3 interrupted",
                            "interruption", "4 answered", "invalidation", "5 invalidated"));
}

TEST_F(ConnectionTest, NotifiesOfTheEndHoweverItComes) {
    const std::function<void()> cases[] = {
        [&] { connection->invalidate(); }, // before it was resumed
        [&] { connection.reset(); },
        [&] {
            connection->resume();
            connection.reset();
        },
        [&] {
            connection->resume();
            connection->suspend();
            far->events.invalidated("");
            connection.reset();
        },
    };
    std::vector<std::string> expected;
    for (const auto& endIn : cases) {
        farSide = far = std::make_shared<FarSide>();
        connection = std::make_shared<Connection>(ServiceName{"com.a"});
        observe(*connection);
        connection->call("m", {}, outcome("call"));
        endIn();
        expected.insert(expected.end(), {"call invalidated", "invalidation"});
        EXPECT_EQ(record.after(expected.size()), expected);
    }
}

TEST_F(ConnectionTest, EndsInsideItsHandlersAndIsNotKeptByThem) {
    const std::weak_ptr<Connection> weak = connection;
    connection->setInterruptionHandler([held = connection]() mutable {
        const auto last = std::move(held);
        last->invalidate();
    });
    connection->setInvalidationHandler([this, held = connection] {
        held->invalidate();
        held->setInterruptionHandler([held] {}); // too late to be kept
        held->setInvalidationHandler([held] {});
        record.add("invalidation");
    });
    connection->resume();
    connection->call("m", {}, [held = connection](const auto&) {});
    connection.reset();
    far->events.interrupted("");
    EXPECT_TRUE(waitUntil([&] { return weak.expired(); }));
    EXPECT_THAT(record.after(1), ElementsAre("invalidation"));
}

TEST_F(ConnectionTest, GivesACallUpWhenItsTimeIsOverAndSendsNoneOfThoseBeforeTheStart) {
    using std::chrono::milliseconds;
    connection->call("m", {}, outcome("unsent"), milliseconds(1));
    connection->call("m", {}, outcome("patient"), std::chrono::hours(1'000'000));
    const auto queue = DispatchQueue::serial("later");
    queue.asyncAfter(milliseconds(60), [&] { connection->resume(); });
    EXPECT_THAT(record.after(1), ElementsAre("unsent timedOut"));
    EXPECT_THAT(far->called(), ElementsAre(2));
    connection->call("m", {}, outcome("late"), milliseconds(0));
    EXPECT_TRUE(record.reaches(2));
    for (const std::uint64_t number : {3U, 2U})
        far->events.replied(number, PropertyList());
    EXPECT_THAT(record.after(3),
                ElementsAre("unsent timedOut", "late timedOut", "patient answered"));
}

TEST_F(ConnectionTest, SendsNothingThatWouldCostItTheBus) {
    using Array = PropertyList::Array;
    const auto nested = [](unsigned depth) {
        PropertyList value = Array();
        for (unsigned level = 1; level < depth; ++level)
            value = PropertyList::Dictionary{{"k", std::move(value)}};
        return value;
    };
    const std::tuple<std::string, Array, bool> cases[] = {
        {"aZ_9", {true, 0.5, PropertyList::Date(), PropertyList::Data(1)}, true},
        {std::string(255, 'm'), Array(32, true), true},
        {"", {}, false},
        {"\u00e4", {}, false},
        {std::string(256, 'm'), {}, false},
        {"m", Array(33, true), false},
        {"m", {nested(21)}, false},
        {"m", {PropertyList()}, false},
        {"m", {Array{PropertyList::UID{}}}, false},
        {"m", {PropertyList::Dictionary{{std::string(1, '\0'), true}}}, false},
        {"m", {PropertyList::Data(9U << 20U), PropertyList::Data(9U << 20U)}, false},
    };
    connection->resume();
    std::vector<std::string> expected;
    for (const auto& [method, arguments, isSent] : cases) {
        connection->call(method, arguments, outcome("call"));
        if (isSent)
            far->events.replied(far->called().back(), PropertyList());
        expected.emplace_back(isSent ? "call answered" : "call badCall");
        EXPECT_EQ(record.after(expected.size()), expected) << method;
    }
}

TEST_F(ConnectionTest, EndsEveryCallOnceUnderManyThreads) {
    constexpr int rounds = 300;
    std::atomic<int> ended = 0;
    std::atomic<int> invalidations = 0;
    connection->setInvalidationHandler([&invalidations] { ++invalidations; });
    connection->resume();
    const auto repeat = [](auto step) {
        return std::thread([step] {
            for (int round = 0; round < rounds; ++round)
                step(round);
        });
    };
    std::thread threads[] = {
        repeat([&](int /*round*/) { connection->call("m", {}, [&](const auto&) { ++ended; }); }),
        repeat([&](int /*round*/) { connection->call("m", {}, [&](const auto&) { ++ended; }); }),
        repeat([&](int /*round*/) {
            connection->suspend();
            connection->setInterruptionHandler([held = connection] {});
            connection->resume();
        }),
        repeat([&](int round) {
            far->events.replied(static_cast<std::uint64_t>(2 * round), PropertyList());
            if (round % 50 == 49)
                far->events.interrupted("");
            if (round == rounds - 1)
                far->events.invalidated("");
        }),
    };
    for (auto& thread : threads)
        thread.join();
    connection.reset();
    EXPECT_TRUE(waitUntil([&] { return ended == 2 * rounds && invalidations == 1; })) << ended;
}
