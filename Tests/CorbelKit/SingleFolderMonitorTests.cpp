#include "CorbelKit/Monitors/SingleFolderMonitor.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>

namespace {

using CorbelKit::SingleFolderMonitor;
using Platform::URL;
using TestSupport::waitUntil;
using TestSupport::writeFile;

struct CountingDelegate : CorbelKit::MonitorDelegate {
    void monitorDidChange(const URL& url) override {
        isRightURL = isRightURL && url == expectedURL;
        ++calls;
    }

    explicit CountingDelegate(URL url)
        : expectedURL(std::move(url)) {}

    const URL expectedURL;
    std::atomic<bool> isRightURL = true;
    std::atomic<int> calls = 0;
};

class SingleFolderMonitorTest : public ::testing::Test {
protected:
    void expectCallAfter(const auto& change) {
        const int before = delegate->calls;
        change();
        EXPECT_TRUE(waitUntil([&] { return delegate->calls > before; }));
    }

    TestSupport::TemporaryFolder folder;
    URL url = URL::file(folder.path().string(), URL::DirectoryHint::isDirectory);
    std::shared_ptr<CountingDelegate> delegate = std::make_shared<CountingDelegate>(url);
};

TEST_F(SingleFolderMonitorTest, TellsOfEachKindOfEntryChangeWithItsFolder) {
    auto monitor = SingleFolderMonitor::make(url);
    monitor->setDelegate(delegate);
    expectCallAfter([&] { writeFile(folder / "a", "1"); });
    expectCallAfter([&] { rename((folder / "a").c_str(), (folder / "b").c_str()); });
    expectCallAfter([&] { std::filesystem::create_hard_link(folder / "b", folder / "c"); });
    expectCallAfter([&] { std::filesystem::remove(folder / "b"); });
    EXPECT_TRUE(delegate->isRightURL);
}

TEST_F(SingleFolderMonitorTest, WritingIntoAFileIsNoEvent) {
    writeFile(folder / "a", "1");
    auto monitor = SingleFolderMonitor::make(url);
    monitor->setDelegate(delegate);
    writeFile(folder / "a", "2");
    std::filesystem::permissions(folder / "a", std::filesystem::perms::owner_read);

    // A second monitor sees, after the same writes, an entry change through the same queue.
    TestSupport::TemporaryFolder other;
    const auto otherURL = URL::file(other.path().string(), URL::DirectoryHint::isDirectory);
    auto otherDelegate = std::make_shared<CountingDelegate>(otherURL);
    auto otherMonitor = SingleFolderMonitor::make(otherURL);
    otherMonitor->setDelegate(otherDelegate);
    writeFile(other / "a", "1");
    ASSERT_TRUE(waitUntil([&] { return otherDelegate->calls > 0; }));
    EXPECT_EQ(delegate->calls, 0);
}

TEST_F(SingleFolderMonitorTest, StaysIdleForAMissingFolder) {
    auto monitor = SingleFolderMonitor::make(
        URL::file((folder / "missing").string(), URL::DirectoryHint::isDirectory));
    EXPECT_EQ(monitor->fileDescriptor(), -1);
    EXPECT_FALSE(monitor->hasSource());
    monitor->stopMonitoring();
    EXPECT_FALSE(monitor->hasSource());
}

TEST_F(SingleFolderMonitorTest, ReleasesItsDescriptorOnceTheStopHasRunItsCourse) {
    auto monitor = SingleFolderMonitor::make(url);
    const int descriptor = monitor->fileDescriptor();
    ASSERT_GE(descriptor, 0);
    monitor->setDelegate(delegate);
    monitor->stopMonitoring();
    monitor->stopMonitoring();
    ASSERT_TRUE(waitUntil([&] { return !monitor->hasSource(); }));
    EXPECT_EQ(monitor->fileDescriptor(), -1);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);

    writeFile(folder / "a", "1");
    monitor->startMonitoring();
    expectCallAfter([&] { writeFile(folder / "b", "1"); });
}

TEST_F(SingleFolderMonitorTest, LeavesItsDescriptorOpenWhenDestroyedWhileWatching) {
    auto monitor = SingleFolderMonitor::make(url);
    const int descriptor = monitor->fileDescriptor();
    monitor.reset();
    // A later monitor's stop takes the same way as the cancellation of the first.
    auto later = SingleFolderMonitor::make(url);
    later->stopMonitoring();
    ASSERT_TRUE(waitUntil([&] { return !later->hasSource(); }));
    EXPECT_NE(fcntl(descriptor, F_GETFD), -1);
}

TEST_F(SingleFolderMonitorTest, DropsEventsWithoutADelegateAndDoesNotKeepItAlive) {
    auto monitor = SingleFolderMonitor::make(url);
    monitor->setDelegate(delegate);
    delegate.reset();
    EXPECT_EQ(monitor->delegate(), nullptr);
    writeFile(folder / "a", "1");
    delegate = std::make_shared<CountingDelegate>(url);
    monitor->setDelegate(delegate);
    expectCallAfter([&] { writeFile(folder / "b", "1"); });
}

struct StoppingDelegate : CorbelKit::MonitorDelegate {
    void monitorDidChange(const URL&) override {
        monitor->stopMonitoring();
        monitor.reset(); // the last owner but the running call itself
        called = true;
    }

    std::shared_ptr<SingleFolderMonitor> monitor;
    std::atomic<bool> called = false;
};

TEST_F(SingleFolderMonitorTest, MayBeStoppedAndReleasedFromItsOwnEvent) {
    auto stopping = std::make_shared<StoppingDelegate>();
    stopping->monitor = SingleFolderMonitor::make(url);
    const std::weak_ptr<SingleFolderMonitor> monitor = stopping->monitor;
    stopping->monitor->setDelegate(stopping);
    writeFile(folder / "a", "1");
    ASSERT_TRUE(waitUntil([&] { return stopping->called.load(); }));
    EXPECT_TRUE(waitUntil([&] { return monitor.expired(); }));
}

} // namespace
