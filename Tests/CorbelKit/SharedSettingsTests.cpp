#include "CorbelKit/Services/SharedSettings.h"
#include "Tests/Support/Testing.h"

using namespace CorbelKit;
using Platform::PropertyList;

TEST(SharedSettings, ReadOnlyAListOfTexts) {
    const TestSupport::TemporaryFolder folder;
    const TestSupport::EnvironmentVariable variable("XDG_CONFIG_HOME", folder.path().string());
    EXPECT_TRUE(SharedSettings::readStringArray("TestList").empty());
    const std::string a = "a", b = "b";
    const std::pair<PropertyList, std::vector<std::string>> cases[] = {
        {PropertyList::Array{b, a}, {"b", "a"}},
        {PropertyList::Array{a, true}, {}},
        {a, {}},
        {PropertyList::Array(), {}}};
    for (const auto& [value, list] : cases) {
        SharedSettings::suite()->set("TestList", value);
        EXPECT_EQ(SharedSettings::readStringArray("TestList"), list);
    }
    SharedSettings::suite()->remove("TestList");
    const TestSupport::EnvironmentVariable nowhere("XDG_CONFIG_HOME", "/dev/null");
    EXPECT_TRUE(SharedSettings::readStringArray("TestList").empty());
}

TEST(ToggledSetting, CountsAsOffBeforeItIsFirstSet) {
    constexpr auto key = "TestToggle";
    auto& settings = Platform::UserDefaults::standard();
    for (const bool expected : {true, false, true}) {
        toggleSetting(key);
        EXPECT_EQ(settings.boolean(key), expected);
    }
    settings.set(key, std::string("no switch"));
    toggleSetting(key);
    EXPECT_EQ(settings.boolean(key), true);
    settings.remove(key);
}
