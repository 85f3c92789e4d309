#include "Platform/UserNotificationCenter.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

using namespace Platform;

// Whoever shows notifications here has the user's settings; nobody else is asked.
TEST(UserNotificationCenter, IsAllowedEverythingAndKeepsTheLatestCategories) {
    std::atomic<int> answers = 0;
    const auto count = [&answers](bool isRight) { answers += isRight ? 1 : 100; };
    auto& center = UserNotificationCenter::current();
    center.requestAuthorization(AuthorizationOptions::alert,
                                [&](bool granted, const auto& error) { count(granted && !error); });
    center.getNotificationSettings([&](NotificationSettings settings) {
        count(settings.authorizationStatus == AuthorizationStatus::authorized &&
              settings.alertSetting == NotificationSetting::enabled);
    });
    center.setNotificationCategories({{.identifier = "A"}, {.identifier = "B"}});
    center.setNotificationCategories({{.identifier = "C"}});
    center.getNotificationCategories([&](const std::vector<NotificationCategory>& categories) {
        count(categories.size() == 1 && categories.front().identifier == "C");
    });
    ASSERT_TRUE(TestSupport::waitUntil([&] { return answers >= 3; }));
    EXPECT_EQ(answers, 3);
}

} // namespace
