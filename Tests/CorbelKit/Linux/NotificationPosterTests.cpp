// What the poster makes of a centre's answers. The centre here is a scripted one, linked in place
// of the platform's: no desktop has a user who refuses on request.

#include "CorbelKit/Services/NotificationPoster.h"
#include "Platform/UserNotificationCenter.h"
#include "Tests/Support/Testing.h"

using namespace Platform;

namespace {

/// What the centre is asked, and says when the time has come.
struct Script {
    std::optional<Error> refusal;
    std::vector<std::function<void(NotificationSettings)>> questions;
    std::vector<NotificationRequest> requests;
};

Script script;

} // namespace

namespace Platform {

class UserNotificationCenter::Impl {};

UserNotificationCenter::UserNotificationCenter() = default;

UserNotificationCenter::~UserNotificationCenter() = default;

UserNotificationCenter& UserNotificationCenter::current() {
    static UserNotificationCenter center;
    return center;
}

void UserNotificationCenter::getNotificationSettings(
    std::function<void(NotificationSettings settings)> completion) {
    script.questions.push_back(std::move(completion));
}

void UserNotificationCenter::add(NotificationRequest request,
                                 std::function<void(std::optional<Error> error)> completion) {
    script.requests.push_back(std::move(request));
    const auto complete = std::move(completion);
    complete(script.refusal);
}

} // namespace Platform

namespace {

using Status = AuthorizationStatus;
using Setting = NotificationSetting;

class NotificationPoster : public ::testing::Test {
protected:
    void SetUp() override { script = {}; }

    // The user's settings arrive at last.
    static void answer(NotificationSettings settings) {
        for (const auto& question : std::exchange(script.questions, {}))
            question(settings);
    }
};

TEST_F(NotificationPoster, PostsOnlyWhereTheUserLetsAlertsBeShown) {
    const std::pair<NotificationSettings, bool> cases[] = {
        {{Status::authorized, Setting::enabled}, true},
        {{Status::authorized, Setting::disabled}, false},
        {{Status::authorized, Setting::notSupported}, false},
        {{Status::denied, Setting::enabled}, false},
        {{Status::provisional, Setting::enabled}, false},
        {{Status::notDetermined, Setting::enabled}, false},
    };
    for (const auto& [settings, isPosted] : cases) {
        script = {};
        CorbelKit::postNotification(
            {.title = "T", .body = "B", .identifier = "", .category = "C", .subtitle = {}});
        EXPECT_TRUE(script.requests.empty()) << "before the settings were known";
        answer(settings);
        EXPECT_EQ(script.requests.size(), isPosted ? 1U : 0U);
    }
}

} // namespace
