#include "CorbelKit/Services/Limit.h"
#include "Tests/Support/Testing.h"

#include <cmath>
#include <semaphore>
#include <thread>

namespace {

using TestSupport::waitUntil;

constexpr double brief = 0.02;
constexpr double never = 3600;

class Limit : public testing::Test {
protected:
    std::atomic<int> executions = 0;
    CorbelKit::Limit limit;
};

TEST_F(Limit, ManyRequestsFromManyThreadsRunOnceWithTheFirstDelay) {
    limit.request("work", brief, [&] { ++executions; });
    std::vector<std::thread> threads(4);
    for (auto& thread : threads) {
        thread = std::thread([&] {
            for (int i = 0; i < 100; ++i)
                limit.request("work", never, [&] { ++executions; });
        });
    }
    for (auto& thread : threads)
        thread.join();
    ASSERT_TRUE(waitUntil([&] { return executions > 0; }));

    // A late request may have come after the execution; what counts is that none ran beside it.
    std::atomic<bool> laterDone = false; // independently of what is held under the other name
    limit.request("another", brief * 2, [&] { laterDone = true; });
    ASSERT_TRUE(waitUntil(laterDone));
    EXPECT_EQ(executions, 1);
}

TEST_F(Limit, RequestMadeByTheActionLeadsToAFurtherExecution) {
    limit.request("work", 0, [&] {
        ++executions;
        limit.request("work", 0, [&] { ++executions; });
    });
    EXPECT_TRUE(waitUntil([&] { return executions == 2; }));
}

TEST(LimitDeathTest, ADelayThatIsNoTimeStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const double delay : {-1e-9, -1.0, 18446744073.71, 1e300, HUGE_VAL, std::nan("")}) {
        EXPECT_DEATH(
            {
                CorbelKit::Limit limit;
                limit.request("work", delay, [] {});
                std::binary_semaphore(0).acquire();
            },
            "delay");
    }
}

} // namespace
