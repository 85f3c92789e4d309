// The settings of a suite as the file that they are here, which any program may write.

#include "Platform/FileHandle.h"
#include "Tests/Platform/UserDefaultsSuite.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <random>
#include <thread>

namespace {

std::atomic<bool> noInotifyInstanceIsLeft = false;

} // namespace

// Ahead of the C library's: the user's other programs share this limit.
extern "C" int inotify_init1(int flags) noexcept {
    if (noInotifyInstanceIsLeft) {
        errno = EMFILE;
        return -1;
    }
    return static_cast<int>(syscall(SYS_inotify_init1, flags));
}

namespace {

using namespace Platform;
using namespace TestSupport;

std::string settings(const std::string& key, const std::string& text) {
    return "<plist><dict><key>" + key + "</key><string>" + text +
           "</string><key>Other</key><true/></dict></plist>";
}

/// The file of the fixture's suite.
template <class Fixture>
class WithFile : public Fixture {
protected:
    void makeFolder() const { fs::create_directories(file.parent_path()); }

    std::string content() const { return contentOf(file); }

    const fs::path file = this->configuration / "tarnwell" / (this->suiteName + ".plist");
};

using UserDefaultsFile = WithFile<UserDefaultsTest>;

class UserDefaultsFileObservation : public WithFile<UserDefaultsObservation> {
protected:
    using Step = std::pair<std::function<void()>, const char*>; // and the value of the key then

    void expectAfterEach(std::span<const Step> steps) {
        const auto observation = observe("Key");
        for (const auto& [step, value] : steps) {
            step();
            expectInTheEnd(std::string("Key:") + value);
        }
    }
};

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

TEST_F(UserDefaultsFileObservation, NotifiesHoweverTheFileComesToDiffer) {
    const auto elsewhere = folder / "elsewhere";
    const auto parent = file.parent_path();
    const Step steps[] = {
        {[&] { open().set("Key", std::string("late")); }, "late"}, // no folder so far
        {[&] { writeFile(file, settings("Key", "in place")); }, "in place"},
        {[&] { replaceFile(file, settings("Key", "replaced")); }, "replaced"},
        {[&] { fs::remove(file); }, "-"},
        {[&] { writeFile(file, settings("Key", "anew")); }, "anew"},
        {[&] { writeFile(file, "<plist><dict>"); }, "-"},
        {[&] { writeFile(file, settings("Key", "repaired")); }, "repaired"},
        {[&] { fs::rename(parent, elsewhere); }, "-"},
        {[&] { fs::rename(elsewhere, parent); }, "repaired"},
        {[&] { fs::rename(configuration.parent_path(), elsewhere); }, "-"},
        {[&] { makeFolder(), writeFile(file, settings("Key", "new folder")); }, "new folder"},
        {[&] { fs::remove_all(configuration.parent_path()); }, "-"},
        {[&] { open().set("Key", std::string("last")); }, "last"},
    };
    expectAfterEach(steps);
}

TEST_F(UserDefaultsFileObservation, NotifiesOfWhatIsBehindLinks) {
    // As by one who keeps the settings of several machines in one place.
    const auto place = folder / "place";
    const auto linkFolder = folder / "links";
    const auto makePlace = [&](const fs::path& path, const char* value) {
        fs::create_directories(path);
        writeFile(path / "there.plist", settings("Key", value));
    };
    const auto link = [](const fs::path& target, const fs::path& path) {
        fs::remove(path);
        fs::create_symlink(target, path);
    };
    const auto parent = file.parent_path();
    makeFolder();
    makePlace(place / "a", "first");
    fs::create_directory(linkFolder);
    link("../../links/middle", configuration / "chain");
    fs::remove(parent);
    link("chain", parent);
    link("../place/a", linkFolder / "middle");
    link("there.plist", place / "a" / file.filename());
    const Step steps[] = {
        {[&] { writeFile(place / "a/there.plist", settings("Key", "in place")); }, "in place"},
        {[&] { replaceFile(place / "a/there.plist", settings("Key", "replaced")); }, "replaced"},
        {[&] {
             makePlace(place / "b", "other folder");
             fs::copy_symlink(place / "a" / file.filename(), place / "b" / file.filename());
             link("../place/b", linkFolder / "new");
             fs::rename(linkFolder / "new", linkFolder / "middle");
         },
         "other folder"},
        {[&] {
             writeFile(place / "b/other.plist", settings("Key", "other file"));
             link("other.plist", place / "b" / file.filename());
         },
         "other file"},
        {[&] { fs::rename(place / "b", place / "away"); }, "-"},
        {[&] {
             makePlace(place / "b", "made anew");
             link("there.plist", place / "b" / file.filename());
         },
         "made anew"},
        {[&] { fs::remove(parent); }, "-"},
        {[&] { makePlace(parent, "no link"), link("there.plist", file); }, "no link"},
        {[&] { link("loop", file), link(file.filename(), parent / "loop"); }, "-"},
        {[&] { writeFile(place / "last", settings("Key", "last")), link(place / "last", file); },
         "last"},
    };
    expectAfterEach(steps);
}

TEST_F(UserDefaultsFileObservation, NotifiesAfterAFolderWasMadeAnewThatSomebodyStillUses) {
    open().set("Key", std::string("first"));
    const auto observation = observe("Key");
    const Platform::FileHandle user(
        ::open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    fs::remove_all(file.parent_path());
    expectInTheEnd("Key:-");
    makeFolder();
    writeFile(file, settings("Key", "anew"));
    expectInTheEnd("Key:anew");
}

TEST_F(UserDefaultsFileObservation, KeepsItsInotifyInstance) {
    makeFolder();
    const auto observation = observe("Key");
    for (const auto* const value : {"first", "second", "third"}) {
        replaceFile(file, settings("Key", value));
        expectInTheEnd(std::string("Key:") + value);
        noInotifyInstanceIsLeft = true; // others have taken what the user may have
    }
    noInotifyInstanceIsLeft = false;
}

TEST_F(UserDefaultsFileObservation,
       NotifiesOfNothingInAFileThatSaysTheSameAndWatchesNothingInTheEnd) {
    const auto watchesNothing = [] {
        const fs::directory_iterator descriptors("/proc/self/fd");
        return std::none_of(begin(descriptors), end(descriptors), [](const auto& entry) {
            std::error_code gone;
            return fs::read_symlink(entry, gone) == "anon_inode:inotify";
        });
    };
    open().set("B", std::string("kept"));
    {
        const auto a = observe("A");
        const auto b = observe("B");
        fs::last_write_time(file, fs::file_time_type::clock::now());
        replaceFile(file, settings("B", "kept"));
        open().set("A", std::string("1"));
        EXPECT_THAT(notified.take(1), testing::ElementsAre("A:1"));
    }
    EXPECT_TRUE(waitUntil(watchesNothing));
}

} // namespace
