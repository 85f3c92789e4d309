// The user's answers, as the delegate hears them.

#include "Platform/Linux/ActivationToken.h"
#include "Platform/UserNotificationCenter.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/NotificationService.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/WaitUntil.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <vector>

namespace {

using namespace Platform;
using TestSupport::NotificationService;

/// Records each answer as "action|identifier|token".
class RecordingDelegate : public UserNotificationCenterDelegate {
public:
    void userNotificationCenterDidReceiveNotificationResponseWithCompletionHandler(
        UserNotificationCenter& /*center*/, const NotificationResponse& response,
        std::function<void()> completionHandler) override {
        const std::lock_guard lock(mutex_);
        answers_.push_back(response.actionIdentifier + "|" + response.request.identifier + "|" +
                           takeActivationToken());
        completionHandler();
    }

    std::vector<std::string> answers() const {
        const std::lock_guard lock(mutex_);
        return answers_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> answers_;
};

// The bus's answers come through the main context.
bool waitInMainContext(const std::function<bool()>& condition) {
    return TestSupport::waitUntil([&] {
        TestSupport::drainMainLoop();
        return condition();
    });
}

std::uint32_t post(NotificationService& service, const std::string& identifier) {
    UserNotificationCenter::current().add({.identifier = identifier,
                                           .content = {.title = "bad \xFF title",
                                                       .subtitle = "Subtitle",
                                                       .body = "Body",
                                                       .categoryIdentifier = "Category"},
                                           .trigger = {}},
                                          [](const auto& error) { EXPECT_FALSE(error); });
    std::optional<TestSupport::NotifyCall> call;
    EXPECT_TRUE(waitInMainContext([&] {
        call = service.next(std::chrono::milliseconds(0));
        return call.has_value();
    }));
    if (!call)
        return 0;
    EXPECT_EQ(call->summary, "bad \uFFFD title");
    EXPECT_EQ(call->body, "Subtitle\nBody");
    return call->number;
}

TEST(DesktopNotifications, HandsTheDelegateTheOwnersAnswersToWhatItWasGiven) {
    const TestSupport::BusDaemon bus;
    const TestSupport::EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", bus.address());
    NotificationService service(bus.address());
    NotificationService stranger(bus.address(), {}, "org.example.Stranger");
    const auto delegate = std::make_shared<RecordingDelegate>();
    UserNotificationCenter::current().setDelegate(delegate);

    const auto first = post(service, "first");
    const auto second = post(service, "second");
    stranger.emitActionInvoked(first, "stranger");
    service.emitActionInvoked(second + 1, "not ours");
    service.emitActivationToken(first, "token");
    service.emitActionInvoked(first, "ShowAction");
    service.emitActivationToken(first, "token of another");
    service.emitNotificationClosed(second, 1);
    service.emitActionInvoked(second, "default");
    EXPECT_TRUE(waitInMainContext([&] { return delegate->answers().size() >= 2; }));
    EXPECT_THAT(delegate->answers(),
                ::testing::ElementsAre("ShowAction|first|token",
                                       std::string(NotificationResponse::defaultActionIdentifier) +
                                           "|second|"));

    service.vanish();
    service.comeBack({"actions"});
    const auto third = post(service, "third");
    EXPECT_EQ(third, 1U);
    service.emitActionInvoked(second, "of the former owner");
    service.emitActionInvoked(third, "ShowAction");
    EXPECT_TRUE(waitInMainContext([&] { return delegate->answers().size() >= 3; }));
    EXPECT_EQ(delegate->answers().back(), "ShowAction|third|");
    UserNotificationCenter::current().setDelegate({});
}

} // namespace
