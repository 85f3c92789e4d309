// That settings are followed however their file comes to differ.

#include "Platform/FileHandle.h"
#include "Tests/Platform/Linux/UserDefaultsFile.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <functional>
#include <span>
#include <utility>

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

class UserDefaultsFileObservation : public WithFile<UserDefaultsObservation> {
protected:
    using Step = std::pair<std::function<void()>, const char*>; // and the value of the key then

    static bool isWatching() {
        const fs::directory_iterator descriptors("/proc/self/fd");
        return std::any_of(begin(descriptors), end(descriptors), [](const auto& entry) {
            std::error_code gone;
            return fs::read_symlink(entry, gone) == "anon_inode:inotify";
        });
    }

    static void makePlace(const fs::path& path, const char* value) {
        fs::create_directories(path);
        writeFile(path / "there.plist", settings("Key", value));
    }

    static void link(const fs::path& target, const fs::path& path) {
        fs::remove(path);
        fs::create_symlink(target, path);
    }

    void expectAfterEach(std::span<const Step> steps) {
        const auto observation = observe("Key");
        for (const auto& [step, value] : steps) {
            step();
            expectInTheEnd(std::string("Key:") + value);
        }
    }
};

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
    ASSERT_TRUE(waitUntil([] { return !isWatching(); })); // for an earlier test
    const auto observation = observe("Key");
    ASSERT_TRUE(waitUntil([] { return isWatching(); }));
    noInotifyInstanceIsLeft = true; // others have taken what the user may have
    for (const auto* const value : {"first", "second"}) {
        replaceFile(file, settings("Key", value));
        expectInTheEnd(std::string("Key:") + value);
    }
    noInotifyInstanceIsLeft = false;
}

TEST_F(UserDefaultsFileObservation,
       NotifiesOfNothingInAFileThatSaysTheSameAndWatchesNothingInTheEnd) {
    open().set("B", std::string("kept"));
    {
        const auto a = observe("A");
        const auto b = observe("B");
        fs::last_write_time(file, fs::file_time_type::clock::now());
        replaceFile(file, settings("B", "kept"));
        open().set("A", std::string("1"));
        EXPECT_THAT(notified.take(1), testing::ElementsAre("A:1"));
    }
    EXPECT_TRUE(waitUntil([] { return !isWatching(); }));
}

} // namespace
