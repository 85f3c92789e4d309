#include "CorbelKit/Monitors/FileSystemMonitor.h"
#include "Tests/CorbelKit/RecordingDelegate.h"
#include "Tests/Support/Testing.h"

namespace {

using namespace TestSupport;
using CorbelKit::FileSystemMonitor;

class FileSystemMonitorTest : public ::testing::Test {
protected:
    FileSystemMonitorTest() {
        for (const auto* name : {"one", "two", "z"})
            fs::create_directory(root / name);
    }

    void watch(const fs::path& folder) {
        monitor = FileSystemMonitor::make(folderURL(folder));
        monitor->setDelegate(delegate);
    }

    // Batches come in order, and the mark is the last of its batch: whatever went before has been
    // notified when this returns.
    void waitForAllSoFar() {
        const auto mark = root / "z" / std::to_string(++lastMark);
        fs::create_directory(mark);
        ASSERT_TRUE(delegate->isNotifiedOf(mark));
    }

    TemporaryFolder temporary;
    const fs::path root = temporary.path();
    const std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
    std::shared_ptr<FileSystemMonitor> monitor;
    int lastMark = 0;
};

TEST_F(FileSystemMonitorTest, NotifiesOfEachFolderOnceForAllThatHappenedInABatch) {
    watch(root);
    for (int file = 0; file < 10; ++file)
        writeFile(root / "one" / std::to_string(file), "1");
    writeFile(root / "two" / "file", "1");
    waitForAllSoFar();
    EXPECT_EQ(delegate->calls(root / "one"), 1);
    EXPECT_EQ(delegate->calls(root / "two"), 1);
    EXPECT_TRUE(delegate->hasFolderURLsOnly());
}

TEST_F(FileSystemMonitorTest, GivesResolvedFoldersWhereItsPathLeadsThroughALink) {
    TemporaryFolder other;
    fs::create_directory_symlink(root, other / "link");
    watch(other / "link" / "one");
    EXPECT_EQ(monitor->url(), folderURL(root / "one"));
    writeFile(root / "one" / "file", "1");
    EXPECT_TRUE(delegate->isNotifiedOf(root / "one"));
}

TEST_F(FileSystemMonitorTest, NotifiesOfEachKindOfChangeAnywhereBelow) {
    fs::create_directories(root / "one" / "deep" / "deeper");
    const auto file = root / "one" / "deep" / "deeper" / "file";
    watch(root);
    const std::function<void()> changes[] = {
        [&] { writeFile(file, "1"); },
        [&] { writeFile(file, "22"); },
        [&] { fs::permissions(file, fs::perms::owner_read); },
        [&] { fs::rename(file, file.string() + "2"); },
        [&] { fs::remove(file.string() + "2"); },
    };
    for (const auto& change : changes) {
        waitForAllSoFar();
        delegate->takeCalls();
        change();
        EXPECT_TRUE(delegate->isNotifiedOf(file.parent_path()));
    }
}

TEST_F(FileSystemMonitorTest, EndsWithEventsPendingAndStartsAgain) {
    watch(root);
    const auto silent = std::make_shared<RecordingDelegate>();
    auto ownerless = FileSystemMonitor::make(folderURL(root));
    ownerless->setDelegate(std::make_shared<RecordingDelegate>());
    EXPECT_EQ(ownerless->delegate(), nullptr);
    auto stopped = FileSystemMonitor::make(folderURL(root));
    auto released = FileSystemMonitor::make(folderURL(root));
    stopped->setDelegate(silent);
    released->setDelegate(silent);
    writeFile(root / "one" / "file", "1");
    stopped->stopMonitoring();
    stopped->stopMonitoring();
    EXPECT_TRUE(stopped->hasStream());
    released.reset();
    waitForAllSoFar();
    EXPECT_EQ(silent->calls(root / "one"), 0);

    stopped->startMonitoring();
    writeFile(root / "one" / "file", "2");
    EXPECT_TRUE(silent->isNotifiedOf(root / "one"));
}

TEST_F(FileSystemMonitorTest, MayBeReleasedFromItsOwnCall) {
    EXPECT_TRUE(isReleasedFromItsCall<FileSystemMonitor>(folderURL(root), root / "one" / "file"));
}

} // namespace
