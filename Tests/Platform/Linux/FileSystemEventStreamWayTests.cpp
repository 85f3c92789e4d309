#include "Platform/FileHandle.h"
#include "Tests/Platform/Linux/EventStreamFixture.h"

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace {

using namespace TestSupport;

using FileSystemEventStreamWayTest = EventStreamFixture;

TEST_F(FileSystemEventStreamWayTest, ReportsOnceARootThatGoesAndWheneverAnotherTakesItsPlace) {
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

TEST_F(FileSystemEventStreamWayTest, LooksIntoFoldersAsSoonAsTheyMayBeReadAndSearched) {
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

TEST_F(FileSystemEventStreamWayTest, FindsATreeAgainWhoseWayCouldNotBeSearchedForAWhile) {
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

TEST_F(FileSystemEventStreamWayTest, FindsATreeAgainInAFolderThatMayBeSearchedButNotRead) {
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

/// Has nothing mounted at the path after the test.
struct Unmounting {
    ~Unmounting() { umount2(path.c_str(), MNT_DETACH); }

    const fs::path path;
};

TEST_F(FileSystemEventStreamWayTest, WatchesWhatIsMountedInATreeAndWhatThatUncovers) {
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
        const Unmounting unmounting{covered};
        if (mount(source.c_str(), covered.c_str(), "tmpfs", source.empty() ? 0 : MS_BIND,
                  nullptr) != 0)
            GTEST_SKIP() << "no privilege to mount";
        EXPECT_TRUE(reported.soonContain(rootAsAWhole()));
        fs::create_directory(below);
        for (const bool isUncovered : {false, true}) {
            EXPECT_TRUE(reportsInTheEnd(reported, below / "file"));
            EXPECT_TRUE(reportsInTheEnd(others, below / "file"));
            EXPECT_TRUE(isUncovered || waitUntil([&] { return umount2(covered.c_str(), 0) == 0; }));
            reported.forget();
            others.forget();
        }
    }
    EXPECT_TRUE(waitUntil([&] { return watches() == before; }));
}

} // namespace
