#include "CorbelKit/Services/NotificationCenter.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <vector>

using CorbelKit::NotificationCenter;
using Platform::Observation;
using testing::ElementsAre;

namespace {

/// Observers of one centre, and who of them was called.
class NotificationCenterTest : public testing::Test {
protected:
    Observation record(const std::string& name, const std::string& who) {
        return center->addObserver(name, [this, who] { called.push_back(who); });
    }

    std::vector<std::string> calledBy(const std::string& name) {
        called.clear();
        center->post(name);
        return called;
    }

    std::unique_ptr<NotificationCenter> center = std::make_unique<NotificationCenter>();
    std::vector<std::string> called;
};

} // namespace

TEST_F(NotificationCenterTest, CallsTheObserversOfTheNameInTheOrderOfTheirAdding) {
    const auto first = record("Changed", "first");
    const auto other = record("Gone", "other");
    auto second = std::optional(record("Changed", "second"));
    const auto third = record("Changed", "third");
    EXPECT_THAT(calledBy("Changed"), ElementsAre("first", "second", "third"));
    second.reset();
    EXPECT_THAT(calledBy("Changed"), ElementsAre("first", "third"));
    second = record("Changed", "second");
    EXPECT_THAT(calledBy("Changed"), ElementsAre("first", "third", "second"));
    EXPECT_THAT(calledBy("changed"), ElementsAre());
}

TEST_F(NotificationCenterTest, CallsNobodyWhoseObservationEndedDuringThePost) {
    std::optional<Observation> later;
    const auto ending = center->addObserver("Changed", [&] { later.reset(); });
    later = record("Changed", "later");
    const auto last = record("Changed", "last");
    EXPECT_THAT(calledBy("Changed"), ElementsAre("last"));
}

TEST_F(NotificationCenterTest, CallsFromTheNextPostOnWhoWasAddedDuringOne) {
    std::vector<Observation> added;
    const auto adding = center->addObserver("Changed", [&] {
        for (int i = 0; i < 100; ++i)
            added.push_back(record("Changed", std::to_string(i)));
    });
    EXPECT_THAT(calledBy("Changed"), ElementsAre());
    EXPECT_EQ(calledBy("Changed").size(), 100U);
}

TEST_F(NotificationCenterTest, LetsAHandlerEndItsOwnObservationAndGoOn) {
    auto owned = std::make_shared<std::string>("once");
    std::optional<Observation> own;
    own = center->addObserver("Changed", [this, &own, owned] {
        own.reset();
        called.push_back(*owned);
    });
    EXPECT_THAT(calledBy("Changed"), ElementsAre("once"));
    EXPECT_THAT(calledBy("Changed"), ElementsAre());
    EXPECT_EQ(owned.use_count(), 1) << "the handler is kept beyond its observation";
}

TEST_F(NotificationCenterTest, PostsFromWithinAHandler) {
    const auto outer = center->addObserver("Font", [this] {
        called.emplace_back("font");
        center->post("Width");
    });
    const auto inner = record("Width", "width");
    const auto last = record("Font", "last");
    EXPECT_THAT(calledBy("Font"), ElementsAre("font", "width", "last"));
}

TEST_F(NotificationCenterTest, EndsBeforeItsObservationsWithoutHarm) {
    auto observation = record("Changed", "nobody");
    center.reset();
    center = std::make_unique<NotificationCenter>();
    observation = record("Changed", "somebody");
    EXPECT_THAT(calledBy("Changed"), ElementsAre("somebody"));
}
