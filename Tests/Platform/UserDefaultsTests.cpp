#include "Platform/UserDefaults.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/WaitUntil.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <climits>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace Platform;
using TestSupport::waitUntil;
using TestSupport::writeFile;
namespace fs = std::filesystem;

constexpr auto suiteName = "org.example.settings";

std::string settings(const std::string& key, const std::string& text) {
    return "<plist><dict><key>" + key + "</key><string>" + text +
           "</string><key>Other</key><true/></dict></plist>";
}

class UserDefaultsTest : public ::testing::Test {
protected:
    static UserDefaults open() { return *UserDefaults::suite(suiteName); }

    void makeFolder() const { fs::create_directories(file.parent_path()); }

    std::string content() const {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    TestSupport::TemporaryFolder folder;
    const fs::path configuration = folder / "above/config";
    const fs::path file = configuration / "tarnwell" / (std::string(suiteName) + ".plist");
    TestSupport::EnvironmentVariable variable{"XDG_CONFIG_HOME", configuration.string()};
};

TEST_F(UserDefaultsTest, ReadsEachKindAsItselfAndAsNoOther) {
    const PropertyList::Data bytes = {std::byte{0}, std::byte{255}};
    const PropertyList values[] = {
        std::string("5"),
        std::int64_t{1},
        true,
        bytes,
        PropertyList::Array{std::string("a"), std::string("b")},
        PropertyList::Array{std::string("a"), true},
        PropertyList::Dictionary{},
    };
    auto defaults = open();
    for (const auto& value : values) {
        defaults.set("Key", value);
        const auto reader = open();
        EXPECT_EQ(reader.object("Key"), value);
        EXPECT_EQ(reader.string("Key").has_value(), value == values[0]);
        EXPECT_EQ(reader.integer("Key").has_value(), value == values[1]);
        EXPECT_EQ(reader.boolean("Key").has_value(), value == values[2]);
        EXPECT_EQ(reader.data("Key").has_value(), value == values[3]);
        EXPECT_EQ(reader.stringArray("Key").has_value(), value == values[4]);
    }
    defaults.remove("Key");
    EXPECT_FALSE(defaults.object("Key"));
}

TEST_F(UserDefaultsTest, ARegisteredDefaultCountsOnlyWhereNothingIsStored) {
    auto defaults = open();
    defaults.set("RegisteredA", std::int64_t{1});
    defaults.registerDefaults({{"RegisteredA", std::int64_t{2}}, {"RegisteredB", std::int64_t{3}}});
    EXPECT_EQ(defaults.integer("RegisteredA"), 1);
    EXPECT_EQ(open().integer("RegisteredB"), 3);
    defaults.set("RegisteredA", std::string("of another kind"));
    EXPECT_FALSE(defaults.integer("RegisteredA"));
    defaults.remove("RegisteredA");
    EXPECT_EQ(defaults.integer("RegisteredA"), 2);
    EXPECT_EQ(content().find("RegisteredB"), std::string::npos);
}

TEST_F(UserDefaultsTest, OpensNoSuiteThatCannotBeKept) {
    for (const auto& name : {std::string(), std::string("a/b"), std::string("a\0b", 3),
                             std::string(NAME_MAX, 'x'), std::string("../a")})
        EXPECT_FALSE(UserDefaults::suite(name)) << name;
    const TestSupport::EnvironmentVariable noFolder("XDG_CONFIG_HOME", "/dev/null");
    EXPECT_FALSE(UserDefaults::suite(suiteName));
}

TEST_F(UserDefaultsTest, KeepsFileAndFoldersToTheUserAndTheFileInItsForm) {
    open().set("Key", true);
    EXPECT_TRUE(content().starts_with("<?xml"));
    const auto modeOf = [](const fs::path& path) { return fs::status(path).permissions(); };
    EXPECT_EQ(modeOf(file), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(modeOf(file.parent_path()), fs::perms::owner_all);
    EXPECT_EQ(modeOf(configuration.parent_path()), fs::perms::owner_all);

    const auto binary =
        PropertyList(PropertyList::Dictionary{{"Old", true}}).write(PropertyList::Format::binary);
    writeFile(file, {reinterpret_cast<const char*>(binary->data()), binary->size()});
    open().set("Key", std::string("\x01")); // which XML cannot hold
    EXPECT_TRUE(content().starts_with("bplist00"));
    EXPECT_EQ(open().boolean("Old"), true);
    EXPECT_EQ(open().string("Key"), "\x01");
}

TEST_F(UserDefaultsTest, ReplacesNothingThatItCannotRead) {
    makeFolder();
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    open().set("Key", true);
    EXPECT_TRUE(fs::is_fifo(file));
    EXPECT_FALSE(open().object("Key"));
    fs::remove(file);
    writeFile(file, settings("Key", "x"));
    fs::resize_file(file, 17 << 20U);
    open().set("Key", true);
    EXPECT_EQ(fs::file_size(file), 17 << 20U);
    EXPECT_FALSE(open().object("Key"));
}

TEST_F(UserDefaultsTest, ProcessesAndThreadsNeverLoseEachOthersKeys) {
    constexpr int rounds = 40;
    const auto store = [](const std::string& who) {
        auto defaults = open();
        for (int i = 0; i < rounds; ++i)
            defaults.set(who + std::to_string(i), true);
    };
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        store("process");
        _exit(0);
    }
    std::thread thread(store, "thread");
    store("main");
    thread.join();
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    const auto defaults = open();
    for (const auto* who : {"process", "thread", "main"}) {
        for (int i = 0; i < rounds; ++i)
            EXPECT_EQ(defaults.boolean(who + std::to_string(i)), true) << who << i;
    }
}

class UserDefaultsObservation : public UserDefaultsTest {
protected:
    // What the handler was told, "-" for no value.
    struct Told {
        std::mutex mutex;
        std::vector<std::string> values; // mutex
    };

    UserDefaults::Observation observe(const std::string& key) {
        return open().observe(key, [this](const auto& keyPath, const auto& value) {
            const auto* text = value ? value->template get<std::string>() : nullptr;
            const std::lock_guard lock(told.mutex);
            told.values.push_back(keyPath + ":" + (text != nullptr ? *text : "-"));
        });
    }

    void expectTold(const std::vector<std::string>& expected) {
        std::vector<std::string> values;
        EXPECT_TRUE(waitUntil([&] {
            const std::lock_guard lock(told.mutex);
            values = told.values;
            return values.size() >= expected.size();
        }));
        EXPECT_EQ(values, expected);
        const std::lock_guard lock(told.mutex);
        told.values.clear();
    }

    // A file written in place may be seen while it is empty, so other values may come first.
    void expectToldInTheEnd(const std::string& expected) {
        std::string last;
        EXPECT_TRUE(waitUntil([&] {
            const std::lock_guard lock(told.mutex);
            last = told.values.empty() ? std::string() : told.values.back();
            return last == expected;
        })) << last;
    }

    Told told;
};

TEST_F(UserDefaultsObservation, TellsHoweverTheFileComesToDiffer) {
    const auto elsewhere = folder / "elsewhere";
    const auto parent = file.parent_path();
    const std::pair<std::function<void()>, const char*> steps[] = {
        {[&] { open().set("Key", std::string("late")); }, "late"}, // no folder so far
        {[&] { writeFile(file, settings("Key", "in place")); }, "in place"},
        {[&] { TestSupport::replaceFile(file, settings("Key", "replaced")); }, "replaced"},
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
    const auto observation = observe("Key");
    for (const auto& [step, value] : steps) {
        step();
        expectToldInTheEnd(std::string("Key:") + value);
    }
}

TEST_F(UserDefaultsObservation, TellsOnlyOfKeysWhoseValueChanged) {
    open().set("B", std::string("kept"));
    const auto a = observe("A");
    const auto b = observe("B");
    open().set("C", std::string("of no interest"));
    open().set("B", std::string("kept"));
    fs::last_write_time(file, fs::file_time_type::clock::now());
    TestSupport::replaceFile(file, settings("B", "kept"));
    open().set("A", std::string("1"));
    expectTold({"A:1"});
    open().remove("B");
    expectTold({"B:-"});
    const auto unregistered = folder.path().filename().string(); // what is registered stays so
    const auto c = observe(unregistered);
    open().registerDefaults({{unregistered, std::string("registered")}});
    expectTold({unregistered + ":registered"});
}

bool watchesNothing() {
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (fs::read_symlink(entry, gone) == "anon_inode:inotify")
            return false;
    }
    return true;
}

TEST_F(UserDefaultsObservation, EndsWithItsObjectAndDisturbsNoOther) {
    std::atomic<int> calls = 0;
    std::mutex mutex;
    std::optional<UserDefaults::Observation> endsItself; // mutex
    const auto count = [&](const auto&, const auto&) {
        ++calls;
        const std::lock_guard lock(mutex);
        endsItself.reset();
    };
    {
        const auto marker = observe("Marker");
        auto dropped = std::make_unique<UserDefaults::Observation>(observe("A"));
        {
            const std::lock_guard lock(mutex);
            endsItself = open().observe("A", count);
        }
        dropped.reset();
        open().set("A", std::string("1"));
        EXPECT_TRUE(waitUntil([&] { return calls > 0; }));
        open().set("A", std::string("2"));
        open().set("Marker", std::string("1"));
        expectTold({"Marker:1"});
        EXPECT_EQ(calls, 1);
    }
    EXPECT_TRUE(waitUntil(watchesNothing));
}

} // namespace
