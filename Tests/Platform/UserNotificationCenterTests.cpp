#include "Platform/UserNotificationCenter.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

using namespace Platform;

TEST(UserNotificationCenter, AnswersEachCallOnceAndAwayFromTheCallersThread) {
    const TestSupport::EnvironmentVariable noBus("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    std::atomic<int> answers = 0;
    const auto count = [&answers, caller = std::this_thread::get_id()](bool isRight) {
        answers += isRight && std::this_thread::get_id() != caller ? 1 : 100;
    };
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
    center.add({.identifier = "a", .content = {.title = "Title"}, .trigger = {}},
               [&](const auto& error) { count(!error); });
    ASSERT_TRUE(TestSupport::waitUntil([&] {
        TestSupport::drainMainLoop(); // where an earlier test left a bus behind
        return answers >= 4;
    }));
    EXPECT_EQ(answers, 4);
}

} // namespace
