#include "Platform/FileSystemEventStream.h"
#include "Tests/Platform/ReportedPaths.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fstream>

namespace {

/// What stands in for the system's answer: the failure for every path that holds the word.
struct Refusal {
    const char* word;
    int failure;
};

std::atomic<const Refusal*> refusal = nullptr;

} // namespace

// Ahead of the C library's, so that a test may bring about the limits that all programs share.
extern "C" int inotify_add_watch(int inotify, const char* path, std::uint32_t events) noexcept {
    const auto* const refused = refusal.load();
    if (refused != nullptr && std::strstr(path, refused->word) != nullptr) {
        errno = refused->failure;
        return -1;
    }
    return static_cast<int>(syscall(SYS_inotify_add_watch, inotify, path, events));
}

namespace {

namespace fs = std::filesystem;
using TestSupport::waitUntil;
using TestSupport::writeFile;

/// How many watches the process holds.
int watches() {
    int count = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fdinfo")) {
        std::ifstream info(entry.path());
        for (std::string line; std::getline(info, line);)
            count += line.starts_with("inotify wd:") ? 1 : 0;
    }
    return count;
}

class FileSystemEventStreamLinuxTest : public ::testing::Test {
protected:
    ~FileSystemEventStreamLinuxTest() override { refusal = nullptr; }

    bool reports(const fs::path& file) {
        writeFile(file, "1");
        return reported.soonContain(file.string());
    }

    std::string rootAsAWhole() const { return root.string() + '/'; }

    TestSupport::TemporaryFolder temporary;
    const fs::path root = temporary.path();
    ReportedPaths reported;
};

TEST_F(FileSystemEventStreamLinuxTest, GivesUpItsWatchesAndThoseOfFoldersThatLeave) {
    TestSupport::TemporaryFolder outside;
    const int before = watches();
    fs::create_directories(root / "leaving" / "a" / "b");
    fs::create_directories(root / "staying" / "a");
    auto stream = reported.streamOf(root.string());
    auto second = reported.streamOf((root / "staying").string());
    EXPECT_EQ(watches(), before + 6);
    fs::rename(root / "leaving", outside / "left");
    EXPECT_TRUE(waitUntil([&] { return watches() == before + 3; }));
    fs::rename(root / "staying", root / "moved");
    fs::remove_all(root / "moved" / "a");
    EXPECT_TRUE(waitUntil([&] { return watches() == before + 2; }));
    stream.reset();
    second.reset();
    EXPECT_TRUE(waitUntil([&] { return watches() == before; }));
}

TEST_F(FileSystemEventStreamLinuxTest, LooksAtTheWholeTreeAgainWhereEventsAreLost) {
    const auto stream = reported.streamOf(root.string());
    std::atomic<bool> mayProceed = false;
    std::atomic<int> ended = 0;
    constexpr int threads = 3; // all that would read
    for (int thread = 0; thread < threads; ++thread) {
        Platform::DispatchQueue::concurrent("test.busy").async([&] {
            waitUntil([&] { return mayProceed.load(); }, std::chrono::minutes(1));
            ++ended;
        });
    }
    int limit = 16384;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
    writeFile(root / "file", "1");
    for (int event = 0; event < limit / 2 + 10; ++event) {
        fs::rename(root / "file", root / "other");
        fs::rename(root / "other", root / "file");
    }
    fs::create_directories(root / "unseen" / "below");
    mayProceed = true;
    EXPECT_TRUE(reported.soonContain(rootAsAWhole()));
    EXPECT_TRUE(reports(root / "unseen" / "below" / "file"));
    EXPECT_TRUE(waitUntil([&] { return ended == threads; }));
}

TEST_F(FileSystemEventStreamLinuxTest, WatchesMoreAsSoonAsTheSystemHasWatchesAgain) {
    fs::create_directories(root / "first" / "below");
    static constexpr Refusal limit{"first", ENOSPC};
    refusal = &limit;
    const auto stream = reported.streamOf(root.string());
    EXPECT_TRUE(reported.soonContain(rootAsAWhole()));
    EXPECT_TRUE(reports(root / "file"));
    reported.forget();
    refusal = nullptr;
    int number = 0;
    EXPECT_TRUE(waitUntil([&] {
        writeFile(root / ("file" + std::to_string(++number)), "1");
        return reported.contains(rootAsAWhole());
    }));
    EXPECT_TRUE(reports(root / "first" / "below" / "file"));
}

TEST_F(FileSystemEventStreamLinuxTest, PassesOverAFolderUntilItMayBeRead) {
    fs::create_directories(root / "locked" / "below");
    static constexpr Refusal locked{"locked", EACCES};
    refusal = &locked;
    const auto stream = reported.streamOf(root.string());
    EXPECT_TRUE(reports(root / "file"));
    refusal = nullptr;
    fs::permissions(root / "locked", fs::perms::owner_all);
    EXPECT_TRUE(reported.soonContain((root / "locked/below/").string()));
    EXPECT_TRUE(reports(root / "locked" / "below" / "file"));
    EXPECT_FALSE(reported.contains(rootAsAWhole()));
}

TEST_F(FileSystemEventStreamLinuxTest, KeepsNamesThatAreNotText) {
    const auto folder = root / "\xFF\xFE";
    const auto stream = reported.streamOf(root.string());
    fs::create_directory(folder);
    EXPECT_TRUE(reported.soonContain(folder.string() + '/'));
    EXPECT_TRUE(reports(folder / "\xC3"));
}

TEST_F(FileSystemEventStreamLinuxTest, FollowsNoLink) {
    TestSupport::TemporaryFolder outside;
    fs::create_directory_symlink(outside.path(), root / "before");
    const auto stream = reported.streamOf(root.string());
    fs::create_directory_symlink(outside.path(), root / "after");
    writeFile(outside / "file", "1");
    EXPECT_TRUE(reports(root / "file"));
    for (const auto* link : {"before/file", "after/file", "after/"})
        EXPECT_FALSE(reported.contains((root / link).string())) << link;
}

TEST_F(FileSystemEventStreamLinuxTest, ReportsOnceARootThatGoesAndTakesTheNextInItsPlace) {
    const auto folder = root / "folder";
    const auto file = root / "single";
    fs::create_directory(folder);
    writeFile(file, "1");
    const auto missing = reported.streamOf((root / "missing").string());
    const auto ofFolder = reported.streamOf(folder.string());
    const auto ofFile = reported.streamOf(file.string());
    EXPECT_TRUE(reports(file));
    reported.forget();
    TestSupport::replaceFile(file, "2");
    EXPECT_TRUE(reported.soonContain(file.string()));
    fs::rename(folder, root / "moved");
    EXPECT_TRUE(reported.soonContain(folder.string() + '/'));
    reported.forget();
    writeFile(root / "moved" / "file", "1");
    EXPECT_TRUE(reports(file));
    EXPECT_FALSE(reported.contains((folder / "file").string()));
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
    const auto stream = reported.streamOf(root.string());
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
