#include "Platform/FileSystemObjectSource.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <fstream>

namespace {

using Platform::DispatchQueue;
using Platform::FileSystemObjectSource;
using Platform::URL;
using TestSupport::waitUntil;
using TestSupport::writeFile;

class FileSystemObjectSourceTest : public ::testing::Test {
protected:
    void SetUp() override {
        fileDescriptor = FileSystemObjectSource::openForEvents(
            URL::file(folder.path().string(), URL::DirectoryHint::isDirectory));
        ASSERT_GE(fileDescriptor, 0);
        source = std::make_unique<FileSystemObjectSource>(fileDescriptor, queue);
    }

    void TearDown() override { close(fileDescriptor); }

    void cancelAndWait() {
        std::atomic<bool> isCancelled = false;
        source->setCancelHandler([&] { isCancelled = true; });
        source->cancel();
        ASSERT_TRUE(waitUntil([&] { return isCancelled.load(); }));
    }

    TestSupport::TemporaryFolder folder;
    DispatchQueue queue = DispatchQueue::concurrent("test.source");
    int fileDescriptor = -1;
    std::unique_ptr<FileSystemObjectSource> source;
    std::atomic<int> events = 0;
};

TEST_F(FileSystemObjectSourceTest, NeverRunsAHandlerBesideItselfAndMissesNothingMeanwhile) {
    std::atomic<int> running = 0;
    std::atomic<bool> isOverlapping = false;
    std::atomic<bool> proceed = false;
    source->setEventHandler([&] {
        isOverlapping = isOverlapping || ++running > 1;
        waitUntil([&] { return proceed.load(); });
        --running;
        ++events;
    });
    source->resume();
    writeFile(folder / "a", "1");
    ASSERT_TRUE(waitUntil([&] { return running == 1; }));
    writeFile(folder / "b", "1"); // while the first is being handled
    proceed = true;
    EXPECT_TRUE(waitUntil([&] { return events >= 2; }));
    EXPECT_FALSE(isOverlapping);
    cancelAndWait();
}

TEST_F(FileSystemObjectSourceTest, RunsTheCancelHandlerOnceBehindTheEventHandlerUnderWay) {
    std::atomic<bool> proceed = false;
    std::atomic<bool> isHandling = false;
    std::atomic<int> cancels = 0;
    std::atomic<bool> isTooEarly = false;
    source->setEventHandler([&] {
        isHandling = true;
        waitUntil([&] { return proceed.load(); });
        isHandling = false;
    });
    source->setCancelHandler([&] {
        isTooEarly = isHandling.load();
        ++cancels;
    });
    source->resume();
    writeFile(folder / "a", "1");
    ASSERT_TRUE(waitUntil([&] { return isHandling.load(); }));
    source->cancel();
    source->cancel();
    source.reset(); // released after the cancellation: its handler still runs
    proceed = true;
    ASSERT_TRUE(waitUntil([&] { return cancels > 0; }));
    EXPECT_FALSE(isTooEarly);
    EXPECT_EQ(cancels, 1);
}

TEST_F(FileSystemObjectSourceTest, AnOverflowOfTheSystemsQueueIsAnEventToo) {
    source->setEventHandler([&] { ++events; });
    // More records than the system keeps for one descriptor.
    const auto before = folder / "before";
    const auto after = folder / "after";
    writeFile(before, "1");
    std::size_t limit = 16384;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    for (std::size_t i = 0; i < limit / 4 + 10; ++i) {
        std::filesystem::rename(before, after);
        std::filesystem::rename(after, before);
    }
    source->resume();
    EXPECT_TRUE(waitUntil([&] { return events > 0; }));
    const int seen = events;
    writeFile(folder / "next", "1");
    EXPECT_TRUE(waitUntil([&] { return events > seen; }));
    cancelAndWait();
}

} // namespace
