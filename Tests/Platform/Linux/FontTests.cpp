#include "Platform/Font.h"
#include "Platform/Linux/Desktop/FontDescription.h"
#include "Tests/Support/Linux/BusDaemon.h"
#include "Tests/Support/Linux/DesktopPortal.h"
#include "Tests/Support/Testing.h"

#include <iostream>
#include <thread>

using Platform::Font;

TEST(Font, IsNamedByItsFaceOrItsFamilyInTheirExactSpelling) {
    const Font regular{.postScriptName = "DejaVuSansMono", .pointSize = 10};
    EXPECT_EQ(Font::named("DejaVuSansMono", 10), regular);
    EXPECT_EQ(Font::named("DejaVu Sans Mono", 10), regular);
    EXPECT_EQ(Font::named("DejaVuSansMono-Bold", 10)->postScriptName, "DejaVuSansMono-Bold");
    EXPECT_FALSE(Font::named("dejavusansmono", 10));
    EXPECT_FALSE(Font::named("DejaVu sans Mono", 10));
}

// The setting is read once, so each desktop gets a process of its own.
TEST(Font, OfFixedPitchIsTheDesktopsChoiceWhereThatIsInstalled) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::pair<std::string, std::string> cases[] = {
        {"DejaVu Serif Bold Italic 10", "DejaVuSerif-BoldItalic"},
        {"DejaVu Sans Mono Semi-Bold 10", "DejaVuSansMono-Bold"},
        {"Nowhere Mono 10", "DejaVuSansMono"},
        {"", "DejaVuSansMono"},
    };
    for (const auto& [setting, expected] : cases) {
        EXPECT_EXIT(
            {
                {
                    const TestSupport::BusDaemon bus;
                    setenv("DBUS_SESSION_BUS_ADDRESS", bus.address().c_str(), 1);
                    const TestSupport::DesktopPortal portal(bus.address(), setting);
                    std::cerr << "[" << Font::userFixedPitch(16)->postScriptName << "]";
                }
                std::_Exit(EXIT_SUCCESS);
            },
            testing::ExitedWithCode(EXIT_SUCCESS), "\\[" + expected + "]")
            << setting;
    }
}

TEST(Font, DescriptionsKeepFamiliesWholeAndDropWhatIsNoStyle) {
    const auto isFamily = [](const std::string& name) {
        return name == "Noto Mono" || name == "Noto" || name == "Iosevka 2";
    };
    const std::tuple<std::string, std::string, std::vector<std::string>> cases[] = {
        {"Noto Mono", "Noto Mono", {}},
        {"Noto Mono Semi-Bold Italic 10.5 @wght=200 #liga=0", "Noto Mono", {"Semi-Bold", "Italic"}},
        {"  Noto   Bold 12px", "Noto", {"Bold"}},
        {"Iosevka 2 11", "Iosevka 2", {}},
        {"Noto Mono,Monospace 10", "Noto Mono", {}},
        {"Elsewhere Mono 10", "", {}},
        {std::string(1'000'000, ' ') + "Noto 10", "", {}},
    };
    for (const auto& [text, family, styleWords] : cases) {
        const auto description = Platform::FontDescription::parse(text, isFamily);
        EXPECT_EQ(description.family, family) << text.substr(0, 60);
        EXPECT_EQ(description.styleWords, styleWords) << text.substr(0, 60);
    }
}
