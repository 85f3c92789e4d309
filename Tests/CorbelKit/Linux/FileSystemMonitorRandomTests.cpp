#include "CorbelKit/Monitors/FileSystemMonitor.h"
#include "Tests/CorbelKit/Linux/RandomChanges.h"
#include "Tests/CorbelKit/RecordingDelegate.h"
#include "Tests/Support/Linux/LateRecords.h"

#include <algorithm>
#include <iostream>
#include <random>

using namespace TestSupport;

namespace {

using Clock = std::chrono::steady_clock;

/// How the monitor is kept from keeping up with the changes of a round.
enum class Delay { none, records, delegate, overflow, overflowAndDelegate };

class FileSystemMonitorRandomTest : public ::testing::Test {
protected:
    // Batches come in order, and the mark is the last of its batch: whatever was changed before is
    // notified by then.
    void waitForMark() {
        const auto mark = marks / std::to_string(++lastMark);
        fs::create_directory(mark);
        ASSERT_TRUE(waitUntil([&] {
            writeFile(mark / "file", "1"); // again: the first record may be one of those lost
            return delegate->calls(mark) > 0;
        }));
    }

    void change(RandomChanges& changes, Delay delay) {
        constexpr int steps = 500; // at a time
        const bool isOverflow = delay == Delay::overflow || delay == Delay::overflowAndDelegate;
        const bool isDelegateBusy = delay == Delay::delegate || delay == Delay::overflowAndDelegate;
        if (isDelegateBusy)
            keepDelegateBusy();
        std::unique_ptr<HeldWorkers> held;
        if (isOverflow || delay == Delay::records)
            held = std::make_unique<HeldWorkers>(HeldWorkers::all - (isDelegateBusy ? 1 : 0));
        for (int step = 0; step < steps; ++step)
            changes.changeSomething();
        if (isOverflow)
            overflowInotify(root);
        if (isDelegateBusy)
            held.reset();
        // The next batch comes due while the delegate is busy.
        const auto due = Clock::now() + std::chrono::milliseconds(isDelegateBusy ? 1200 : 0);
        for (int step = 0; step < steps || Clock::now() < due; ++step)
            changes.changeSomething();
        delegate->setBusy(false);
    }

    void keepDelegateBusy() {
        delegate->setBusy(true);
        writeFile(marks / "busy", "1");
        ASSERT_TRUE(waitUntil([&] { return delegate->calls(marks) > 0; }));
    }

    void checkRound(const RandomChanges& changes) {
        const auto notified = delegate->takeCalls();
        if (notified.contains(root.parent_path().string()))
            return; // count was lost: everything is to be looked at
        const auto present = changes.folders();
        for (const auto* folder : present) {
            const bool isFound = !folder->isChanged || notified.contains(folder->path.string()) ||
                                 std::ranges::any_of(present, [&](const auto* above) {
                                     return above->hasMoved &&
                                            isWithin(folder->path, above->path) &&
                                            notified.contains(above->path.string());
                                 });
            EXPECT_TRUE(isFound) << folder->path;
        }
    }

    /// Whether each folder is watched, and by the path that it has.
    void checkFolders(const RandomChanges& changes) {
        for (const auto* folder : changes.folders())
            writeFile(folder->path / "probe", "1");
        waitForMark();
        auto notified = delegate->takeCalls();
        std::erase_if(notified, [&](const auto& call) { return isWithin(call.first, marks); });
        notified.erase(root.parent_path().string()); // to be looked at as a whole, once more
        for (const auto* folder : changes.folders())
            EXPECT_EQ(notified.erase(folder->path.string()), 1U) << folder->path;
        EXPECT_THAT(notified, ::testing::IsEmpty()) << "by a path that is not, or not any more";
    }

    TemporaryFolder temporary;
    const fs::path marks = temporary.path() / "tree" / "z";
    const fs::path root = marks.parent_path() / "root";
    const std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
    int lastMark = 0;
};

TEST_F(FileSystemMonitorRandomTest, MissesNoFolderHoweverFoldersMove) {
    for (const auto& folder : {marks, root, temporary / "outside"})
        fs::create_directories(folder);
    const char* const wanted = std::getenv("CORBEL_RANDOM_SEED"); // to play it again
    const auto seed = wanted != nullptr ? std::stoul(wanted) : std::random_device()();
    std::cout << "seed " << seed << std::endl;
    SCOPED_TRACE("seed " + std::to_string(seed));
    auto monitor = CorbelKit::FileSystemMonitor::make(folderURL(root.parent_path()));
    monitor->setDelegate(delegate);
    RandomChanges changes(root, temporary / "outside", static_cast<unsigned>(seed));
    const bool isLong = std::getenv("CORBEL_LONG_TESTS") != nullptr;
    const auto end = Clock::now() + std::chrono::seconds(isLong ? 60 : 8);
    for (int round = 0; !HasFailure() && Clock::now() < end; ++round) {
        changes.beginRound();
        change(changes, static_cast<Delay>(round % 5));
        waitForMark();
        checkRound(changes);
        checkFolders(changes);
    }
}

} // namespace
