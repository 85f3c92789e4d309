#include "CorbelKit/Monitors/FileSystemMonitor.h"
#include "Tests/CorbelKit/RecordingDelegate.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <random>
#include <set>

namespace {

namespace fs = std::filesystem;
using Platform::URL;

/// A folder of the test's own record. It keeps its identity when it moves.
struct Folder {
    fs::path path;
    bool isGone = false;
    std::set<std::string> paths; // all that it had in the round
    bool isChanged = false;
};

/// Changes a tree at random, and records which folders it changed.
class RandomChanges {
public:
    RandomChanges(const fs::path& root, fs::path outside, unsigned seed)
        : root_(root)
        , outside_(std::move(outside))
        , random_(seed) {
        add(root);
    }

    void beginRound() {
        std::erase_if(folders_, [](const auto& folder) { return folder->isGone; });
        for (auto& folder : folders_)
            *folder = Folder{folder->path, false, {folder->path.string()}, false};
    }

    void changeSomething(bool isCalm) {
        const std::function<void()> kinds[] = {[&] { write(any()); },
                                               [&] { write(any()); },
                                               [&] { removeFile(any()); },
                                               [&] { makeChain(); },
                                               [&] { makeChain(); },
                                               [&] { removeFolder(any()); },
                                               [&] { move(any(), outside_); },
                                               [&] { moveIn(any()); },
                                               [&] { move(any(), any().path); }};
        kinds[random_() % (isCalm ? 5 : 9)]();
    }

    const std::vector<std::shared_ptr<Folder>>& folders() const { return folders_; }

private:
    Folder& any() { return *folders_[random_() % folders_.size()]; }

    std::string newName() { return "n" + std::to_string(++names_); }

    Folder& add(const fs::path& path) {
        folders_.push_back(std::make_shared<Folder>(Folder{path, false, {path.string()}, false}));
        return *folders_.back();
    }

    bool isUsable(const Folder& folder) const {
        return !folder.isGone && isWithin(folder.path, root_);
    }

    static bool isWithin(const fs::path& path, const fs::path& ancestor) {
        const auto prefix = ancestor.string() + '/';
        return path == ancestor || path.string().starts_with(prefix);
    }

    void change(const fs::path& path) {
        for (auto& folder : folders_) {
            if (!folder->isGone && folder->path == path)
                folder->isChanged = true;
        }
    }

    void write(const Folder& folder) {
        if (!isUsable(folder))
            return;
        TestSupport::writeFile(folder.path / ("file" + std::to_string(random_() % 4)),
                               std::to_string(random_()));
        change(folder.path);
    }

    void removeFile(const Folder& folder) {
        if (isUsable(folder) && fs::remove(folder.path / ("file" + std::to_string(random_() % 4))))
            change(folder.path);
    }

    void makeChain() {
        const auto& parent = any();
        if (folders_.size() > 400 || !isUsable(parent))
            return;
        auto path = parent.path;
        for (auto depth = random_() % 4 + 1; depth > 0; --depth) {
            change(path);
            path /= newName();
            fs::create_directory(path);
            write(add(path));
        }
    }

    bool mayMove(const Folder& folder) const { return isUsable(folder) && folder.path != root_; }

    void removeFolder(const Folder& folder) {
        if (!mayMove(folder))
            return;
        const auto path = folder.path;
        fs::remove_all(path);
        change(path.parent_path());
        for (auto& other : folders_)
            other->isGone = other->isGone || isWithin(other->path, path);
    }

    void rename(const fs::path& source, const fs::path& to) {
        const auto from = source; // the path of a folder, which is about to change
        fs::rename(from, to);
        change(from.parent_path());
        change(to.parent_path());
        for (auto& folder : folders_) {
            if (folder->isGone || !isWithin(folder->path, from))
                continue;
            folder->path = to.string() + folder->path.string().substr(from.string().size());
            folder->paths.insert(folder->path.string());
        }
    }

    void move(const Folder& folder, const fs::path& into) {
        if (mayMove(folder) && fs::exists(into) && !isWithin(into, folder.path))
            rename(folder.path, into / newName());
    }

    void moveIn(const Folder& target) {
        const fs::directory_iterator entry(outside_);
        if (entry != fs::directory_iterator() && isUsable(target))
            rename(entry->path(), target.path / newName());
    }

    const fs::path root_;
    const fs::path outside_;
    std::mt19937 random_;
    int names_ = 0;
    std::vector<std::shared_ptr<Folder>> folders_;
};

class FileSystemMonitorRandomTest : public ::testing::Test {
protected:
    // Batches come in order, and the mark is the last of its batch: whatever was changed before is
    // notified by then.
    void waitForMark() {
        const auto mark = marks / std::to_string(++lastMark);
        fs::create_directory(mark);
        ASSERT_TRUE(delegate->isNotifiedOf(mark));
    }

    void checkRound(const RandomChanges& changes) {
        const auto notified = delegate->takeCalls();
        if (notified.contains(root.parent_path().string()))
            return; // count was lost: everything is to be looked at
        for (const auto& folder : changes.folders()) {
            const bool isInTree = folder->path.string().starts_with(root.string());
            if (!folder->isChanged || folder->isGone || !isInTree)
                continue;
            EXPECT_TRUE(std::ranges::any_of(folder->paths, [&](const auto& path) {
                return notified.contains(path);
            })) << folder->path;
        }
    }

    TestSupport::TemporaryFolder temporary;
    const fs::path marks = temporary.path() / "tree" / "z";
    const fs::path root = marks.parent_path() / "root";
    const std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
    int lastMark = 0;
};

TEST_F(FileSystemMonitorRandomTest, MissesNoFolderThatIsStillThereToLookAt) {
    fs::create_directories(marks);
    fs::create_directories(root);
    fs::create_directories(temporary / "outside");
    const auto seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    auto monitor = CorbelKit::FileSystemMonitor::make(
        URL::file(root.parent_path().string(), URL::DirectoryHint::isDirectory));
    monitor->setDelegate(delegate);
    RandomChanges changes(root, temporary / "outside", seed);
    const auto end = std::chrono::steady_clock::now() +
                     std::chrono::seconds(std::getenv("CORBEL_LONG_TESTS") == nullptr ? 4 : 60);
    for (int round = 0; std::chrono::steady_clock::now() < end; ++round) {
        changes.beginRound();
        for (int step = 0; step < 1000; ++step)
            changes.changeSomething(round % 2 == 0);
        waitForMark();
        checkRound(changes);
    }
}

} // namespace
