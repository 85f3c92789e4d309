#include "Tests/Platform/Linux/EventStreamFixture.h"
#include "Tests/Support/Linux/LateRecords.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <functional>

namespace {

/// Asked about each item that is about to be watched, on whatever thread that is; null for nobody.
using MayWatch = std::function<bool(const std::string& path)>;
std::atomic<const MayWatch*> mayWatch = nullptr;

} // namespace

// Ahead of the C library's, so that a test may bring about the limits that all programs share, and
// what happens at just that moment.
extern "C" int inotify_add_watch(int inotify, const char* path, std::uint32_t events) noexcept {
    const auto* const asked = mayWatch.load();
    std::error_code isNoLink; // the item is given by its descriptor's
    if (asked != nullptr && !(*asked)(std::filesystem::read_symlink(path, isNoLink).string())) {
        errno = ENOSPC;
        return -1;
    }
    return static_cast<int>(syscall(SYS_inotify_add_watch, inotify, path, events));
}

namespace {

using Platform::DispatchQueue;
using Platform::FileSystemEventStream;
using namespace TestSupport;

class FileSystemEventStreamLinuxTest : public EventStreamFixture {
protected:
    ~FileSystemEventStreamLinuxTest() override { mayWatch = nullptr; }
};

TEST_F(FileSystemEventStreamLinuxTest, GivesUpItsWatchesAndThoseOfFoldersThatLeave) {
    TemporaryFolder outside;
    const auto onTheWay = reported.streamOf((root / "missing").string());
    const int before = watches();
    fs::create_directories(root / "leaving" / "a" / "b");
    fs::create_directories(root / "staying" / "a");
    auto stream = reported.streamOf(root.string());
    auto second = reported.streamOf((root / "staying").string());
    EXPECT_EQ(watches(), before + 5);
    fs::rename(root / "leaving", outside / "left");
    EXPECT_TRUE(waitUntil([&] { return watches() == before + 2; }));
    fs::rename(root / "staying", root / "moved");
    fs::remove_all(root / "moved" / "a");
    EXPECT_TRUE(waitUntil([&] { return watches() == before + 1; }));
    const MayWatch letGo = [&](const auto& path) {
        if (path == root / "going") // which has no record of it
            fs::rename(path, outside / "gone");
        return true;
    };
    mayWatch = &letGo;
    fs::create_directory(root / "going");
    EXPECT_TRUE(waitUntil([&] { return fs::exists(outside / "gone"); }));
    fs::create_directory(root / "next");
    EXPECT_TRUE(reportsInTheEnd(reported, root / "next" / "file"));
    EXPECT_TRUE(waitUntil([&] { return watches() == before + 2; }));
    stream.reset();
    second.reset();
    EXPECT_TRUE(waitUntil([&] { return watches() == before; }));
}

TEST_F(FileSystemEventStreamLinuxTest, LooksAtTheWholeTreeAgainWhereEventsAreLost) {
    struct Call {
        std::atomic<bool> hasBegun = false;
        std::atomic<bool> mayReturn = false;
    };

    const auto call = std::make_shared<Call>();
    const auto busy = FileSystemEventStream::make(root.string(), std::chrono::milliseconds(20),
                                                  DispatchQueue::concurrent("test.busy"),
                                                  [call, record = reported](const auto& paths) {
                                                      call->hasBegun = true;
                                                      waitUntil(call->mayReturn);
                                                      record.add(paths);
                                                  });
    const ReportedPaths others;
    const auto next = others.streamOf(root.string()); // the second to come due
    writeFile(root / "first", "1");
    EXPECT_TRUE(waitUntil(call->hasBegun));
    writeFile(root / "due", "1");
    EXPECT_TRUE(others.soonContain((root / "due").string()));
    {
        const HeldWorkers held(HeldWorkers::all - 1);
        overflowInotify(root);
        fs::create_directories(root / "unseen" / "below");
    }
    EXPECT_TRUE(others.soonContain(rootAsAWhole()));
    call->mayReturn = true;
    EXPECT_TRUE(reported.soonContain(rootAsAWhole()));
    EXPECT_TRUE(reports(root / "unseen" / "below" / "file"));
    EXPECT_TRUE(others.soonContain((root / "unseen" / "below" / "file").string()));
}

// The folder that takes the others has no watch yet: of their coming it has no record.
TEST_F(FileSystemEventStreamLinuxTest, FollowsFoldersThatMoveWhileTheWholeTreeIsLookedAt) {
    constexpr int folders = 10; // most are met before
    for (int folder = 0; folder < folders; ++folder)
        fs::create_directory(root / std::to_string(folder));
    const auto taking = root / "taking";
    std::atomic<bool> hasMoved = false;
    const MayWatch moveFirst = [&](const auto& path) {
        for (int folder = 0; path == taking && !hasMoved && folder < folders; ++folder)
            fs::rename(root / std::to_string(folder), taking / std::to_string(folder));
        hasMoved = hasMoved || path == taking;
        return true;
    };
    const auto stream = reported.streamOf(root.string());
    {
        const HeldWorkers held;
        overflowInotify(root);
        fs::create_directory(taking);
        mayWatch = &moveFirst;
    }
    EXPECT_TRUE(waitUntil(hasMoved));
    EXPECT_TRUE(reported.soonContain(rootAsAWhole()));
    for (int folder = 0; folder < folders; ++folder)
        EXPECT_TRUE(reports(taking / std::to_string(folder) / "file")) << folder;
}

TEST_F(FileSystemEventStreamLinuxTest, WatchesMoreAsSoonAsTheSystemHasWatchesAgain) {
    fs::create_directories(root / "first" / "below");
    const MayWatch notFirst = [](const auto& path) { return path.find("first") == path.npos; };
    mayWatch = &notFirst;
    const auto stream = reported.streamOf(root.string());
    EXPECT_TRUE(reported.soonContain(rootAsAWhole()));
    EXPECT_TRUE(reports(root / "file"));
    reported.forget();
    mayWatch = nullptr;
    int number = 0;
    EXPECT_TRUE(waitUntil([&] {
        writeFile(root / ("file" + std::to_string(++number)), "1");
        return reported.contains(rootAsAWhole());
    }));
    EXPECT_TRUE(reports(root / "first" / "below" / "file"));
}

TEST_F(FileSystemEventStreamLinuxTest, GivesAChangeThePathThatItHasWhenHandedOver) {
    const TemporaryFolder outside;
    const auto inner = fs::path("inner") / "folder";
    for (const auto* name : {"first", "second", "leaving"})
        fs::create_directories(root / name / inner);
    const auto stream = reported.streamOf(root.string());
    {
        const HeldWorkers held;
        for (const auto* name : {"first", "second", "leaving"})
            writeFile(root / name / inner / name, "1");
        fs::rename(root / "first", root / "moved");
        fs::rename(root / "second", root / "first");
        fs::rename(root / "leaving", outside / "left");
        writeFile(outside / "left" / inner / "after", "1");
    }
    EXPECT_TRUE(reported.soonContain((root / "moved" / inner / "first").string()));
    EXPECT_TRUE(reported.soonContain((root / "first" / inner / "second").string()));
    EXPECT_TRUE(reported.soonContain((root / "leaving" / inner / "leaving").string()));
    EXPECT_FALSE(reported.contains((root / "first" / inner / "first").string()));
    EXPECT_FALSE(reported.contains((root / "leaving" / inner / "after").string()));
}

TEST_F(FileSystemEventStreamLinuxTest, KeepsNamesThatAreNotText) {
    const auto folder = root / "\xFF\xFE";
    const auto stream = reported.streamOf(root.string());
    fs::create_directory(folder);
    EXPECT_TRUE(reported.soonContain(folder.string() + '/'));
    EXPECT_TRUE(reports(folder / "\xC3"));
}

/// Makes a chain of folders that is deeper than any path may be long; gives its innermost folder.
int makeDeepChain(int base, const std::string& name, int depth) {
    int folder = dup(base);
    for (int level = 0; level < depth && folder >= 0; ++level) {
        mkdirat(folder, name.c_str(), 0700);
        const int inner = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        close(folder);
        folder = inner;
    }
    return folder;
}

TEST_F(FileSystemEventStreamLinuxTest, FollowsATreeDeeperThanPathsMayBeLong) {
    constexpr int depth = 5000;
    const int base = open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const int innermost = makeDeepChain(base, "deep", depth);
    ASSERT_GE(innermost, 0);
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit few{.rlim_cur = 100, .rlim_max = before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    const auto stream = reported.streamOf(root.string());
    setrlimit(RLIMIT_NOFILE, &before);
    std::string path = root.string();
    for (int level = 0; level < depth; ++level)
        path += "/deep";
    close(openat(innermost, "file", O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    EXPECT_TRUE(reported.soonContain(path + "/file"));
    mkdirat(innermost, "made", 0700);
    EXPECT_TRUE(reported.soonContain(path + "/made/"));
    close(innermost);
    close(base);
}

} // namespace
