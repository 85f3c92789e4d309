#include "Platform/DispatchQueue.h"
#include "Platform/MainThread.h"
#include "Tests/Support/Testing.h"

#include <thread>

using Platform::DispatchQueue;
using TestSupport::waitUntil;
using namespace std::chrono_literals;

TEST(DispatchQueue, DelayedTasksRunByTheirTimeAndNeverEarly) {
    const auto queue = DispatchQueue::serial("test.delayed");
    const auto start = std::chrono::steady_clock::now();
    std::vector<int> order;
    std::atomic<bool> isEarly = false;
    std::atomic<int> ended = 0;
    // Must not wrap round into the past, nor hold those of earlier times.
    queue.asyncAfter(std::chrono::nanoseconds::max(), [] {});
    for (const int delay : {30, 10, 20, 0, -5}) {
        queue.asyncAfter(delay * 1ms, [&, delay] {
            isEarly = isEarly || std::chrono::steady_clock::now() < start + delay * 1ms;
            if (delay > 0)
                order.push_back(delay);
            ++ended;
        });
    }
    const bool isStalled = std::chrono::steady_clock::now() - start > 10ms; // some were due before
    ASSERT_TRUE(waitUntil([&] { return ended == 5; }));
    EXPECT_FALSE(isEarly);
    EXPECT_TRUE(isStalled || order == (std::vector{10, 20, 30}));
}

TEST(DispatchQueue, BlockedTasksHoldNobodyElse) {
    std::atomic<bool> release = false;
    std::atomic<int> held = 0;
    const auto blocking = DispatchQueue::blocking("test.blocking");
    for (int i = 0; i < 8; ++i) {
        blocking.async([&] {
            ++held;
            waitUntil([&] { return release.load(); });
            --held;
        });
    }
    EXPECT_TRUE(waitUntil([&] { return held == 8; }));
    std::atomic<bool> ran = false;
    DispatchQueue::serial("test.serial").asyncAfter(1ms, [&] { ran = true; });
    EXPECT_TRUE(waitUntil([&] { return ran.load(); }));
    release = true;
    EXPECT_TRUE(waitUntil([&] { return held == 0; }));
}

TEST(MainThreadDeathTest, NamesTheFileAndLineThatRanOnAnotherThread) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_TRUE(Platform::MainThread::isCurrent());
    Platform::MainThread::check();
    const auto offend = [] { Platform::MainThread::check(); };
    const auto line = std::to_string(__LINE__ - 1);
    EXPECT_DEATH(std::thread(offend).join(), "Tests/Platform/DispatchQueueTests.cpp, line " + line);
}
