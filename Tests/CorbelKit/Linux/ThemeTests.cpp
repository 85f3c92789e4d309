// What themes make of the desktop here, and of a place that takes no file.

#include "CorbelKit/Formats/Themes.h"
#include "CorbelKit/Services/Defaults.h"
#include "Platform/UserDefaults.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace CorbelKit;

// Without a bus the desktop is light.
TEST(CurrentTheme, IsChosenByTheSettingsAndElseTheFirst) {
    const TestSupport::TemporaryFolder folder;
    const TestSupport::EnvironmentVariable configuration("XDG_CONFIG_HOME", folder.path().string());
    const TestSupport::EnvironmentVariable noBus("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    const TestSupport::EnvironmentVariable noFolder("XDG_RUNTIME_DIR", std::nullopt);
    const Themes themes(std::nullopt);

    const struct {
        std::optional<int> appearance, light, dark;
        Theme::City expected;
    } cases[] = {
        {{}, {}, {}, Theme::City::stockholm}, {2, {}, {}, Theme::City::oslo},
        {1, 3, 0, Theme::City::helsinki},     {2, 3, 1, Theme::City::copenhagen},
        {2, 3, 7, Theme::City::helsinki},     {2, 4, -1, Theme::City::stockholm},
        {0, -1, 2, Theme::City::stockholm},
    };

    auto& settings = Platform::UserDefaults::standard();
    const auto set = [&](std::string_view key, std::optional<int> value) {
        if (value) {
            settings.set(key, std::int64_t{*value});
        } else {
            settings.remove(key);
        }
    };
    for (const auto& [appearance, light, dark, expected] : cases) {
        set(Defaults::appearance, appearance);
        set(Defaults::currentLightTheme, light);
        set(Defaults::currentDarkTheme, dark);
        EXPECT_EQ(themes.current(), themes.items()[static_cast<std::size_t>(expected)]);
    }
}

TEST(ThemesThatCannotBeSaved, AreKeptInMemoryAndTheUserIsTold) {
    const TestSupport::TemporaryFolder folder;
    Themes themes(Platform::URL::file((folder / "missing/Themes.plist").string()));
    auto& theme = *themes.items()[0];
    const Platform::Font font{.postScriptName = "Some-Font", .pointSize = 7};
    testing::internal::CaptureStderr();
    themes.setFont(theme, Theme::Font::Kind::textFont, font);
    for (int round = 0; round < 3; ++round)
        TestSupport::drainMainLoop();
    const auto told = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(told.starts_with("An error occurred while saving: ")) << told;
    EXPECT_EQ(theme.textFont.string, "Some-Font@@@@7.00");
}
