#include "CorbelKit/Services/NotificationCenter.h"

#include <gmock/gmock.h>

using CorbelKit::NotificationCenter;
using Platform::Observation;
using testing::ElementsAre;

namespace {

/// Observers of one centre, and who of them was called.
class NotificationCenterTest : public testing::Test {
protected:
    Observation record(const std::string& name, const std::string& who) {
        return center.addObserver(name, [this, who] { called.push_back(who); });
    }

    std::vector<std::string> calledBy(const std::string& name) {
        called.clear();
        center.post(name);
        return called;
    }

    NotificationCenter center;
    std::vector<std::string> called;
    std::optional<Observation> later;
};

} // namespace

TEST_F(NotificationCenterTest, CallsTheObserversOfTheNameInTheOrderOfTheirAdding) {
    const auto first = record("Changed", "first");
    const auto other = record("Gone", "other");
    auto second = std::optional(record("Changed", "second"));
    const auto third = record("Changed", "third");
    EXPECT_THAT(calledBy("Changed"), ElementsAre("first", "second", "third"));
    second = record("Changed", "second");
    EXPECT_THAT(calledBy("Changed"), ElementsAre("first", "third", "second"));
    EXPECT_THAT(calledBy("changed"), ElementsAre());
}

TEST_F(NotificationCenterTest, CallsWhoObservesFromBeforeThePostToHisTurn) {
    std::vector<Observation> added;
    const auto changing = center.addObserver("Changed", [&] {
        later.reset();
        for (int i = 0; i < 100; ++i)
            added.push_back(record("Changed", std::to_string(i)));
    });
    later = record("Changed", "later");
    const auto last = record("Changed", "last");
    EXPECT_THAT(calledBy("Changed"), ElementsAre("last"));
    EXPECT_EQ(calledBy("Changed").size(), 101U);
}

TEST_F(NotificationCenterTest, LetsAHandlerEndItsOwnObservationAndGoOn) {
    const auto owned = std::make_shared<std::string>("once");
    later = center.addObserver("Changed", [this, owned] {
        later.reset();
        called.push_back(*owned);
    });
    EXPECT_THAT(calledBy("Changed"), ElementsAre("once"));
    EXPECT_THAT(calledBy("Changed"), ElementsAre());
    EXPECT_EQ(owned.use_count(), 1) << "the handler is kept beyond its observation";
}

TEST_F(NotificationCenterTest, EndsBeforeItsObservationsWithoutHarm) {
    auto brief = std::make_unique<NotificationCenter>();
    later = brief->addObserver("Changed", [] {});
    brief.reset();
    later = record("Changed", "somebody");
    EXPECT_THAT(calledBy("Changed"), ElementsAre("somebody"));
}
