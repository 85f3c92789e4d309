// The settings of a suite as the file that they are here, which any program may write.

#include "Platform/FileHandle.h"
#include "Tests/Platform/Linux/UserDefaultsFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <thread>

namespace {

using namespace Platform;
using namespace TestSupport;

using UserDefaultsFile = WithFile<UserDefaultsTest>;

TEST_F(UserDefaultsFile, KeepsFileAndFoldersToTheUserAndTheFileInItsForm) {
    open().set("Key", true);
    EXPECT_TRUE(content().starts_with("<?xml"));
    const auto modeOf = [](const fs::path& path) { return fs::status(path).permissions(); };
    EXPECT_EQ(modeOf(file), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(modeOf(file.parent_path()), fs::perms::owner_all);
    EXPECT_EQ(modeOf(configuration.parent_path()), fs::perms::owner_all);

    const PropertyList old = PropertyList::Dictionary{{"Old", true}};
    writeFile(file, textOf(*old.write(PropertyList::Format::binary)));
    open().set("Key", std::string("\x01")); // which XML cannot hold
    EXPECT_TRUE(content().starts_with("bplist00"));
    EXPECT_EQ(open().boolean("Old"), true);
    EXPECT_EQ(open().string("Key"), "\x01");
}

TEST_F(UserDefaultsFile, SetsAsideWhatItDoesNotUnderstand) {
    makeFolder();
    const std::string broken[] = {"<plist><dict>", "<plist><array/></plist>",
                                  settings("Key", "x") + '\0'};
    for (const auto& bytes : broken) {
        writeFile(file, bytes);
        EXPECT_FALSE(open().object("Key"));
        EXPECT_FALSE(open().remove("Key")); // there is nothing to change
        EXPECT_EQ(content(), bytes);
        EXPECT_FALSE(open().set("Key", true));
        EXPECT_EQ(open().boolean("Key"), true);
    }
    std::vector<std::string> kept;
    for (const auto& entry : fs::directory_iterator(file.parent_path())) {
        if (entry.path().filename().string().starts_with(suiteName + " (unreadable "))
            kept.push_back(contentOf(entry.path()));
    }
    EXPECT_TRUE(std::ranges::is_permutation(kept, broken));
}

TEST_F(UserDefaultsFile, LeavesAloneWhatItCannotReplaceAndSaysSo) {
    makeFolder();
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(open().set("Key", true).value().description, file.string() + ": not a file");
    EXPECT_TRUE(fs::is_fifo(file));
    fs::remove(file);
    EXPECT_FALSE(open().set("Key", std::string("kept")));
    // In the way of what is to be written, as a full disk is.
    const auto obstacle = file.parent_path() / ("." + file.filename().string() + ".saving");
    fs::create_directory(obstacle);
    EXPECT_THAT(open().set("Key", true).value().description,
                testing::StartsWith(file.string() + ": "));
    EXPECT_TRUE(open().remove("Key"));
    fs::remove(obstacle);
    PropertyList deep;
    for (int level = 0; level < 512; ++level)
        deep = PropertyList::Array{std::move(deep)};
    EXPECT_THAT(open().set("Other", deep).value().description, testing::HasSubstr("read again"));
    EXPECT_EQ(open().string("Key"), "kept");
}

TEST_F(UserDefaultsFile, OfAnySizeThatIsStoredIsRead) {
    // More than what a reader takes of a stranger.
    const PropertyList many = PropertyList::Array(700, PropertyList::Data(100'000));
    makeFolder();
    const PropertyList all = PropertyList::Dictionary{{"Many", many}};
    writeFile(file, textOf(*all.write(PropertyList::Format::binary)));
    EXPECT_FALSE(open().set("Key", true));
    EXPECT_TRUE(open().object("Many") == many);
}

TEST_F(UserDefaultsFile, BehindALinkIsChangedWhereItIs) {
    makeFolder();
    fs::create_symlink("../../kept/there.plist", file);
    EXPECT_TRUE(open().set("Key", true)); // no such folder
    fs::create_directory(folder / "above/kept");
    EXPECT_FALSE(open().set("Key", true));
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_FALSE(fs::is_symlink(folder / "above/kept/there.plist"));
    EXPECT_EQ(open().boolean("Key"), true);
}

/// A process that does the work and ends.
pid_t startProcess(const std::function<void()>& work) {
    const pid_t process = fork();
    if (process == 0) {
        work();
        _exit(0);
    }
    return process;
}

TEST_F(UserDefaultsFile, ProcessesAndThreadsNeverLoseEachOthersKeys) {
    constexpr int rounds = 1000;
    constexpr int keys = 20;
    const auto key = [](const std::string& who, int round) {
        return who + std::to_string(round % keys);
    };
    const auto store = [&](const std::string& who) {
        auto defaults = open();
        for (int round = 0; round < rounds; ++round) {
            const auto present = defaults.integer(key(who, round));
            if (present.value_or(round - keys) != round - keys)
                return; // one of the others has put an older value back
            defaults.set(key(who, round), std::int64_t{round});
        }
    };
    const pid_t child = startProcess([&] { store("process"); });
    ASSERT_NE(child, -1);
    std::thread thread(store, "thread");
    store("main");
    thread.join();
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    const auto defaults = open();
    for (const auto* who : {"process", "thread", "main"}) {
        for (int round = rounds - keys; round < rounds; ++round)
            EXPECT_EQ(defaults.integer(key(who, round)), round) << who;
    }
}

TEST_F(UserDefaultsFile, IsWholeWheneverItsWriterIsKilled) {
    open().set("Kept", std::string(5000, 'x'));
    std::mt19937 random(7);
    std::uniform_int_distribution<int> patience(0, 15'000);
    for (int round = 0; round < 200; ++round) {
        const pid_t writer = startProcess([] {
            for (std::int64_t value = 0;; ++value)
                open().set("Changing", value);
        });
        ASSERT_NE(writer, -1);
        usleep(static_cast<useconds_t>(patience(random)));
        kill(writer, SIGKILL);
        ASSERT_EQ(waitpid(writer, nullptr, 0), writer);
        const auto bytes = content();
        ASSERT_TRUE(PropertyList::read(bytesOf(bytes))) << bytes;
        ASSERT_EQ(open().string("Kept"), std::string(5000, 'x'));
    }
    open().set("Last", true); // what the dead have left behind is in nobody's way
    EXPECT_EQ(open().boolean("Last"), true);
    EXPECT_TRUE(open().integer("Changing")) << "no writer has come to write anything";
}

} // namespace
