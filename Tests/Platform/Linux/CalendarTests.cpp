#include "Platform/Calendar.h"
#include "Tests/Support/Testing.h"

TEST(Calendar, FollowsTheUsersTimeZone) {
    const std::pair<const char*, int> cases[] = {
        {"UTC", 0}, {"Asia/Tokyo", 9}, {"America/New_York", 19}, {":Asia/Tokyo", 9}, {"", 0}};
    for (const auto& [zone, hour] : cases) {
        const TestSupport::EnvironmentVariable variable("TZ", zone);
        EXPECT_EQ(Platform::Calendar::gregorian().dateComponents({})->hour, hour) << zone;
    }
}
