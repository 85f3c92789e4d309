#include "CorbelKit/Services/SharedSettings.h"

#include <gtest/gtest.h>

TEST(ToggledSetting, CountsAsOffBeforeItIsFirstSet) {
    constexpr auto key = "TestToggle";
    auto& settings = Platform::UserDefaults::standard();
    for (const bool expected : {true, false, true}) {
        CorbelKit::toggleSetting(key);
        EXPECT_EQ(settings.boolean(key), expected);
    }
    settings.set(key, std::string("no switch"));
    CorbelKit::toggleSetting(key);
    EXPECT_EQ(settings.boolean(key), true);
    settings.remove(key);
}

TEST(SuiteOfTheProgramsOwnName, IsItsStandardDomain) {
    auto suite = Platform::UserDefaults::suite("CorbelKitTests");
    ASSERT_TRUE(suite);
    suite->set("TestSuite", true);
    EXPECT_EQ(Platform::UserDefaults::standard().boolean("TestSuite"), true);
    suite->remove("TestSuite");
}
