#include "CorbelKit/Monitors/SingleFolderMonitor.h"
#include "Tests/CorbelKit/RecordingDelegate.h"
#include "Tests/Support/Testing.h"

#include <fcntl.h>

using namespace TestSupport;

namespace {

using CorbelKit::SingleFolderMonitor;

class SingleFolderMonitorTest : public ::testing::Test {
protected:
    void expectCallAfter(const auto& change) {
        delegate->takeCalls();
        change();
        EXPECT_TRUE(delegate->isNotifiedOf(folder.path()));
    }

    TemporaryFolder folder;
    Platform::URL url = folderURL(folder.path());
    std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
};

TEST_F(SingleFolderMonitorTest, NotifiesOfEachKindOfEntryChangeWithItsFolder) {
    auto monitor = SingleFolderMonitor::make(url);
    monitor->setDelegate(delegate);
    expectCallAfter([&] { writeFile(folder / "a", "1"); });
    expectCallAfter([&] { fs::rename(folder / "a", folder / "b"); });
    expectCallAfter([&] { fs::create_hard_link(folder / "b", folder / "c"); });
    expectCallAfter([&] { fs::remove(folder / "b"); });
    EXPECT_TRUE(delegate->hasFolderURLsOnly());
}

TEST_F(SingleFolderMonitorTest, WritingIntoAFileIsNoEvent) {
    writeFile(folder / "a", "1");
    auto monitor = SingleFolderMonitor::make(url);
    monitor->setDelegate(delegate);
    writeFile(folder / "a", "2");
    fs::permissions(folder / "a", fs::perms::owner_read);

    // A second monitor sees, after the same writes, an entry change through the same queue.
    TemporaryFolder other;
    auto otherDelegate = std::make_shared<RecordingDelegate>();
    auto otherMonitor = SingleFolderMonitor::make(folderURL(other.path()));
    otherMonitor->setDelegate(otherDelegate);
    writeFile(other / "a", "1");
    ASSERT_TRUE(otherDelegate->isNotifiedOf(other.path()));
    EXPECT_TRUE(delegate->takeCalls().empty());
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

TEST_F(SingleFolderMonitorTest, MayBeStoppedAndReleasedFromItsOwnEvent) {
    EXPECT_TRUE(isReleasedFromItsCall<SingleFolderMonitor>(url, folder / "a"));
}

} // namespace
