// What themes make of the desktop here, and of a place that takes no file.

#include "CorbelKit/Formats/Themes.h"
#include "CorbelKit/Services/Defaults.h"
#include "Platform/UserDefaults.h"
#include "Tests/Support/Testing.h"

using namespace CorbelKit;
using namespace TestSupport;

// Without a bus the desktop is light.
TEST(CurrentTheme, IsChosenByTheSettingsAndElseTheFirst) {
    const TemporaryFolder folder;
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", folder.path().string());
    const EnvironmentVariable noBus("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    const EnvironmentVariable noFolder("XDG_RUNTIME_DIR", std::nullopt);
    const Themes themes(std::nullopt);

    using enum Theme::City;

    const struct {
        std::optional<int> appearance, light, dark;
        Theme::City expected;
    } cases[] = {{{}, {}, {}, stockholm}, {2, {}, {}, oslo},   {1, 3, 0, helsinki},
                 {2, 3, 1, copenhagen},   {2, 3, 7, helsinki}, {2, 4, -1, stockholm},
                 {0, -1, 2, stockholm}};

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
