#include "Platform/FileHandle.h"
#include "Platform/FileSystemEventStream.h"
#include "Tests/Platform/ReportedPaths.h"
#include "Tests/Support/Linux/LateRecords.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <fstream>
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
    ~FileSystemEventStreamLinuxTest() override { mayWatch = nullptr; }

    bool reports(const fs::path& file) {
        writeFile(file, "1");
        return reported.soonContain(file.string());
    }

    // The tree may be found again only after some of the changes.
    static bool reportsInTheEnd(const ReportedPaths& paths, const fs::path& file) {
        return waitUntil([&] {
            writeFile(file, "1");
            return paths.contains(file.string());
        });
    }

    std::string rootAsAWhole() const { return root.string() + '/'; }

    TemporaryFolder temporary;
    const fs::path root = temporary.path();
    ReportedPaths reported;
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

TEST_F(FileSystemEventStreamLinuxTest, ReportsOnceARootThatGoesAndWheneverAnotherTakesItsPlace) {
    const auto folder = root / "above" / "folder";
    const auto file = root / "single";
    fs::create_directories(folder);
    writeFile(file, "1");
    const auto ofFolder = reported.streamOf(folder.string());
    const auto ofFile = reported.streamOf(file.string());
    const auto ofMissing = reported.streamOf((root / "missing/on/the/way").string());
    EXPECT_TRUE(reports(file));
    reported.forget();
    replaceFile(file, "2");
    EXPECT_TRUE(reported.soonContain(file.string()));

    const auto changesOnce = [&](const fs::path& path, const auto& change) {
        reported.forget();
        change();
        const bool isReported = reported.soonContain(path.string() + '/');
        reported.forget();
        return isReported && reports(file) && !reported.contains(path.string() + '/');
    };
    EXPECT_TRUE(changesOnce(folder, [&] { fs::rename(folder, root / "moved"); }));
    writeFile(root / "moved" / "file", "1");
    EXPECT_TRUE(reports(file));
    EXPECT_FALSE(reported.contains((folder / "file").string()));
    EXPECT_TRUE(changesOnce(folder, [&] { fs::create_directory(folder); }));
    EXPECT_TRUE(reports(folder / "file"));
    const int held = open(folder.c_str(), O_PATH | O_CLOEXEC); // as a process that works in it
    EXPECT_TRUE(changesOnce(folder, [&] { fs::remove_all(folder); }));
    fs::rename(folder.parent_path(), root / "elsewhere");
    EXPECT_TRUE(changesOnce(folder, [&] { fs::create_directories(folder); }));
    EXPECT_TRUE(reports(folder / "file"));
    close(held);

    const auto missing = root / "missing/on/the/way";
    EXPECT_TRUE(changesOnce(missing, [&] { fs::create_directories(missing); }));
    EXPECT_TRUE(reports(missing / "file"));
}

/// No file is the user's by privilege, while it lasts.
class WithoutPrivilege {
public:
    explicit WithoutPrivilege(const fs::path& folder)
        : user_(geteuid()) {
        constexpr uid_t nobody = 65534;
        if (user_ == 0 && chown(folder.c_str(), nobody, nobody) == 0)
            isChanged_ = seteuid(nobody) == 0;
    }

    ~WithoutPrivilege() { isChanged_ = isChanged_ && seteuid(user_) != 0; }

    WithoutPrivilege(const WithoutPrivilege&) = delete;
    WithoutPrivilege& operator=(const WithoutPrivilege&) = delete;
    WithoutPrivilege(WithoutPrivilege&&) = delete;
    WithoutPrivilege& operator=(WithoutPrivilege&&) = delete;

private:
    const uid_t user_;
    bool isChanged_ = false;
};

TEST_F(FileSystemEventStreamLinuxTest, LooksIntoFoldersAsSoonAsTheyMayBeReadAndSearched) {
    const WithoutPrivilege unprivileged(root);
    for (const auto permissions : {fs::perms::none, fs::perms::owner_read}) {
        const auto locked = root / std::to_string(static_cast<int>(permissions));
        fs::create_directories(locked / "below");
        fs::permissions(locked, permissions);
        const ReportedPaths others;
        const auto ofTree = reported.streamOf(root.string());
        const auto ofLocked = others.streamOf(locked.string());
        EXPECT_TRUE(reports(root / "file"));
        fs::permissions(locked, fs::perms::owner_all);
        EXPECT_TRUE(reported.soonContain((locked / "below/").string()));
        EXPECT_TRUE(reports(locked / "below" / "file"));
        EXPECT_TRUE(reportsInTheEnd(others, locked / "below" / "file"));
        EXPECT_FALSE(reported.contains(rootAsAWhole()));
    }
}

TEST_F(FileSystemEventStreamLinuxTest, FindsATreeAgainWhoseWayCouldNotBeSearchedForAWhile) {
    const WithoutPrivilege unprivileged(root);
    const auto way = root / "way";
    const auto tree = way / "tree";
    fs::create_directories(tree);
    const Platform::FileHandle held(open(tree.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    const auto stream = reported.streamOf(tree.string());
    fs::permissions(way, fs::perms::none);
    mkdirat(held.fileDescriptor(), "new", 0700);
    EXPECT_TRUE(reported.soonContain((tree / "new").string()));
    fs::permissions(way, fs::perms::owner_all);
    EXPECT_TRUE(reportsInTheEnd(reported, tree / "new/file"));
}

TEST_F(FileSystemEventStreamLinuxTest, FindsATreeAgainInAFolderThatMayBeSearchedButNotRead) {
    const WithoutPrivilege unprivileged(root);
    const auto way = root / "way";
    const auto tree = way / "tree";
    fs::create_directories(tree);
    fs::permissions(way, fs::perms::owner_write | fs::perms::owner_exec);
    const auto stream = reported.streamOf(tree.string());
    fs::remove_all(tree);
    EXPECT_TRUE(reported.soonContain(tree.string() + '/'));
    fs::create_directory(tree);
    EXPECT_TRUE(reportsInTheEnd(reported, tree / "made"));
    fs::rename(way, root / "elsewhere");
    fs::create_directories(tree);
    EXPECT_TRUE(reportsInTheEnd(reported, tree / "made again"));
}

/// A file system or folder that is mounted while it lasts.
class Mount {
public:
    explicit Mount(fs::path at, const fs::path& source = {})
        : at_(std::move(at))
        , isMounted_(mount(source.empty() ? "none" : source.c_str(), at_.c_str(), "tmpfs",
                           source.empty() ? 0 : MS_BIND, nullptr) == 0) {}

    ~Mount() { umount2(at_.c_str(), MNT_DETACH); }

    Mount(const Mount&) = delete;
    Mount& operator=(const Mount&) = delete;
    Mount(Mount&&) = delete;
    Mount& operator=(Mount&&) = delete;

    bool isMounted() const { return isMounted_; }

    /// Once nobody has anything open on it.
    bool end() const {
        return waitUntil([&] { return umount2(at_.c_str(), 0) == 0; });
    }

private:
    const fs::path at_;
    const bool isMounted_;
};

TEST_F(FileSystemEventStreamLinuxTest, WatchesWhatIsMountedInATreeAndWhatThatUncovers) {
    const TemporaryFolder outside;
    const auto covered = root / "with blank";
    const auto below = covered / "below";
    fs::create_directories(below);
    fs::create_directories(outside / "below");
    const auto stream = reported.streamOf(root.string());
    const ReportedPaths others;
    const auto ofBelow = others.streamOf(below.string()); // its root is covered by turns
    const int before = watches();
    for (const auto& source : {fs::path(), outside.path()}) {
        const Mount mount(covered, source);
        if (!mount.isMounted())
            GTEST_SKIP() << "no privilege to mount";
        EXPECT_TRUE(reported.soonContain(rootAsAWhole()));
        fs::create_directory(below);
        for (const bool isUncovered : {false, true}) {
            EXPECT_TRUE(reportsInTheEnd(reported, below / "file"));
            EXPECT_TRUE(reportsInTheEnd(others, below / "file"));
            EXPECT_TRUE(isUncovered || mount.end());
            reported.forget();
            others.forget();
        }
    }
    EXPECT_TRUE(waitUntil([&] { return watches() == before; }));
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
