#include "Platform/UserNotificationCenter.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>

#include <thread>

using namespace Platform;

TEST(UserNotificationCenter, AnswersEachCallOnceAndAwayFromTheCallersThread) {
    const TestSupport::EnvironmentVariable noBus("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    const TestSupport::EnvironmentVariable noFolder("XDG_RUNTIME_DIR", std::nullopt);
    std::atomic<int> answers = 0;
    const auto count = [&answers, caller = std::this_thread::get_id()] {
        answers += std::this_thread::get_id() != caller ? 1 : 100;
    };
    auto& center = UserNotificationCenter::current();
    center.requestAuthorization(AuthorizationOptions::alert,
                                [&](bool /*granted*/, const auto& /*error*/) { count(); });
    center.getNotificationSettings([&](NotificationSettings /*settings*/) { count(); });
    center.setNotificationCategories({{.identifier = "A"}});
    center.add({.identifier = "a", .content = {.title = "Title"}, .trigger = {}},
               [&](const auto& /*error*/) { count(); });
    ASSERT_TRUE(TestSupport::waitUntil([&] {
        TestSupport::drainMainLoop(); // where an earlier test left a bus behind
        return answers >= 3;
    }));
    EXPECT_EQ(answers, 3);
}
