#include "Tests/Platform/UserDefaultsSuite.h"

using namespace Platform;
using testing::ElementsAre;

TEST_F(UserDefaultsTest, ReadsTextsAndDataAsThemselvesAndNumbersAndSwitchesAsEachOther) {
    const auto text = [](const char* characters) { return PropertyList(std::string(characters)); };
    const PropertyList::Data bytes = {std::byte{0}, std::byte{255}};

    const struct {
        PropertyList value;
        std::optional<std::int64_t> integer;
        std::optional<bool> boolean;
        bool isTextArray = false;
    } cases[] = {
        {true, 1, true},
        {false, 0, false},
        {-2, -2, true},
        {2.75, 2, true},
        {0x1p63, std::nullopt, true},
        {text("YES"), std::nullopt, true},
        {text("No"), std::nullopt, false},
        {text("-12"), -12, true},
        {text("2 of 3"), std::nullopt, std::nullopt},
        {text("9223372036854775808"), std::nullopt, std::nullopt},
        {bytes, std::nullopt, std::nullopt},
        {PropertyList::Array{text("a"), text("b")}, std::nullopt, std::nullopt, true},
        {PropertyList::Array{text("a"), true}, std::nullopt, std::nullopt},
        {PropertyList::Dictionary{}, std::nullopt, std::nullopt},
    };

    auto defaults = open();
    for (const auto& [value, integer, boolean, isTextArray] : cases) {
        defaults.set("Key", value);
        const auto reader = open();
        const auto* characters = value.get<std::string>();
        EXPECT_EQ(reader.object("Key"), value);
        EXPECT_EQ(reader.integer("Key"), integer) << value.value().index();
        EXPECT_EQ(reader.boolean("Key"), boolean) << value.value().index();
        EXPECT_EQ(reader.string("Key"), characters != nullptr ? std::optional(*characters)
                                                              : std::optional<std::string>());
        EXPECT_EQ(reader.data("Key").has_value(), value == PropertyList(bytes));
        EXPECT_EQ(reader.stringArray("Key").has_value(), isTextArray);
    }
}

TEST_F(UserDefaultsTest, ReadsANumberBeyondTheSignedOnesAsASwitchAlone) {
    open().set("Key", UINT64_MAX);
    EXPECT_EQ(open().object("Key"), PropertyList(UINT64_MAX));
    EXPECT_FALSE(open().integer("Key"));
    EXPECT_EQ(open().boolean("Key"), true);
    removeAll({"Key"});
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
}

// Some systems keep the user's languages for every program.
TEST_F(UserDefaultsTest, ReadsItsOwnDomainAlone) {
    const auto other = *UserDefaults::suite(suiteName + ".other");
    open().set("AppleLanguages", std::string("own"));
    EXPECT_EQ(open().string("AppleLanguages"), "own");
    removeAll({"AppleLanguages"});
    for (const auto& defaults : {open(), other, UserDefaults::standard()})
        EXPECT_FALSE(defaults.object("AppleLanguages"));
    open().set("Shared", true);
    EXPECT_FALSE(other.object("Shared"));
    EXPECT_FALSE(UserDefaults::standard().object("Shared"));
    removeAll({"Shared"});
}

TEST_F(UserDefaultsTest, OpensNoSuiteThatCannotBeKept) {
    for (const auto& name : {std::string(), std::string("a/b"), std::string("a\0b", 3),
                             std::string(255, 'x'), std::string("../a")})
        EXPECT_FALSE(UserDefaults::suite(name)) << name;
}

TEST_F(UserDefaultsObservation, NotifiesOnlyOfKeysWhoseValueChanged) {
    open().set("B", std::string("kept"));
    const auto a = observe("A");
    const auto b = observe("B");
    open().set("C", std::string("of no interest"));
    open().set("B", std::string("kept"));
    open().set("A", std::string("1"));
    EXPECT_THAT(notified.take(1), ElementsAre("A:1"));
    open().remove("B");
    EXPECT_THAT(notified.take(1), ElementsAre("B:-"));
    const auto unregistered = folder.path().filename().string(); // what is registered stays so
    const auto c = observe(unregistered);
    open().registerDefaults({{unregistered, std::string("registered")}});
    EXPECT_THAT(notified.take(1), ElementsAre(unregistered + ":registered"));
    removeAll({"A", "C"});
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
        EXPECT_TRUE(TestSupport::waitUntil([&] { return calls > 0; }));
        open().set("A", std::string("2"));
        open().set("Marker", std::string("1"));
        EXPECT_THAT(notified.take(1), ElementsAre("Marker:1"));
        EXPECT_EQ(calls, 1);
    }
    removeAll({"A", "Marker"});
}
