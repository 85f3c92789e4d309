#include "CorbelKit/Coding/Coding.h"
#include "CorbelKit/Formats/BuiltInThemes.h"
#include "CorbelKit/Formats/Themes.h"
#include "CorbelKit/Services/NotificationCenter.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace CorbelKit;
using Platform::PropertyList;
using Platform::URL;

namespace {

std::vector<Theme> themesOf(const Themes& themes) {
    std::vector<Theme> values;
    for (const auto& item : themes.items())
        values.push_back(*item);
    return values;
}

std::vector<Theme> builtIn() {
    std::vector<Theme> values;
    for (const auto& theme : builtInThemes())
        values.push_back(*theme);
    return values;
}

class ThemesTest : public ::testing::Test {
protected:
    URL at(std::string_view name) const { return URL::file((folder / name).string()); }

    /// The built-in themes as a file that somebody has changed.
    URL alteredFile(const std::function<void(PropertyList::Array& themes)>& alter,
                    PropertyList::Format format = PropertyList::Format::binary) const {
        auto list = *encoded(builtIn(), CodingFormat::propertyList);
        alter(std::get<PropertyList::Array>(list.value()));
        const auto bytes = *list.write(format);
        TestSupport::writeFile(folder / "altered",
                               {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        return at("altered");
    }

    static PropertyList::Dictionary& entry(PropertyList& dictionary, const std::string& key) {
        auto& entries = std::get<PropertyList::Dictionary>(dictionary.value());
        return std::get<PropertyList::Dictionary>(entries.at(key).value());
    }

    const TestSupport::TemporaryFolder folder;
};

TEST_F(ThemesTest, AgreeWithAnotherImplementationInBothDirections) {
    Themes(at("Themes.plist")).save();
    const auto command =
        "python3 '" CORBEL_TEST_DATA "/ThemePeer.py' '" + folder.path().string() + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    auto expected = builtIn();
    EXPECT_EQ(themesOf(Themes(at("Themes.plist"))), expected);
    std::ranges::reverse(expected);
    for (const auto* theirs : {"theirs.xml", "theirs.binary"})
        EXPECT_EQ(themesOf(Themes(at(theirs))), expected) << theirs;
}

TEST_F(ThemesTest, AreTheBuiltInOnesWhereTheFileIsNotWhole) {
    const std::function<void(PropertyList::Array&)> alterations[] = {
        [](auto& themes) { entry(themes[2], "comment").erase("alpha"); },
        [](auto& themes) { entry(themes[0], "text")["red"] = std::string("0"); },
        [](auto& themes) { entry(themes[0], "text")["red"] = true; },
        [](auto& themes) { entry(themes[3], "textFont").clear(); },
        [](auto& themes) { std::get<PropertyList::Dictionary>(themes[1].value()).erase("api"); },
        [](auto& themes) { themes.emplace_back(std::string("theme")); },
    };
    for (const auto& alter : alterations)
        EXPECT_EQ(themesOf(Themes(alteredFile(alter))), builtIn());
    TestSupport::writeFile(folder / "broken", "<plist><dict/></plist>");
    EXPECT_EQ(themesOf(Themes(at("broken"))), builtIn());
    EXPECT_EQ(themesOf(Themes(at("missing"))), builtIn());
    EXPECT_EQ(themesOf(Themes(std::nullopt)), builtIn());
}

TEST_F(ThemesTest, TakeNumbersAsTheyAreAndPassOverWhatTheyDoNotKnow) {
    const Themes themes(alteredFile([](auto& list) {
        list.resize(1);
        auto& text = entry(list[0], "text");
        text["red"] = std::int64_t{-3};
        text["green"] = HUGE_VAL;
        text["blue"] = std::nan("");
        text["hue"] = std::string("unknown");
        std::get<PropertyList::Dictionary>(list[0].value())["cursor"] = true;
    }));
    ASSERT_EQ(themes.items().size(), 1U);
    const auto& text = themes.items().front()->text;
    EXPECT_EQ(text.red, -3);
    EXPECT_EQ(text.green, HUGE_VAL);
    EXPECT_TRUE(std::isnan(text.blue));
}

TEST_F(ThemesTest, CanBeNoneAndThenHaveNoCurrentOne) {
    const Themes themes(alteredFile([](auto& list) { list.clear(); }));
    EXPECT_TRUE(themes.items().empty());
    EXPECT_DEATH(static_cast<void>(themes.current()), "no theme to choose from");
}

TEST_F(ThemesTest, TellAndSaveEachChange) {
    std::vector<std::string> told;
    auto& center = NotificationCenter::defaultCenter();
    std::vector<Platform::Observation> observations;
    for (const auto name :
         {Themes::themeColorChanged, Themes::textFontChanged, Themes::lineNumberFontChanged}) {
        observations.push_back(
            center.addObserver(name, [&told, name] { told.emplace_back(name); }));
    }

    Themes themes(at("Themes.plist"));
    auto& theme = *themes.items()[1];
    EXPECT_FALSE(std::filesystem::exists(folder / "Themes.plist"));
    themes.setColor(theme, Theme::Color::Kind::api,
                    Platform::Color::deviceRGB(0.1, 1.5, -0.3, 0.4));
    EXPECT_EQ(theme.api, (Theme::Color{.red = 0.1, .green = 1.5, .blue = -0.3, .alpha = 0.4}));
    const Platform::Font font{.postScriptName = "Some-Font", .pointSize = 12.345};
    themes.setFont(theme, Theme::Font::Kind::textFont, font);
    themes.setFont(theme, Theme::Font::Kind::lineNumberFont, font);
    EXPECT_EQ(theme.textFont.string.substr(0, 16), "Some-Font@@@@12.");
    EXPECT_EQ(theme.textFont, theme.lineNumberFont);
    EXPECT_THAT(told, testing::ElementsAre("ThemeColorChanged", "TextFontChanged",
                                           "LineNumberFontChanged", "LineNumberFontChanged"));
    TestSupport::drainMainLoop();
    EXPECT_EQ(themesOf(Themes(at("Themes.plist"))), themesOf(themes));
}

TEST(ThemeColor, IsThatOfLabelsWhereThereIsNoneInRGB) {
    EXPECT_EQ(Theme::Color::of(Platform::Color::pattern()),
              Theme::Color::of(Platform::Color::label()));
}

// Where no bundle translates, the keys stand for themselves.
TEST(ThemeLabel, HasOneCapitalInWhatIsShownAsASentence) {
    using enum Theme::Color::Kind;
    const std::pair<Theme::Color::Kind, const char*> cases[] = {
        {lineNumberText, "Line numbers — Text"},
        {lineNumberBackground, "Line numbers — Background"},
        {invisible, "Invisible characters (·  ¬  ¶)"},
        {highlightLine, "Highlight current line — Background"},
        {string, "\"String\""},
        {instruction, "[Instruction]"},
    };
    for (const auto& [kind, expected] : cases)
        EXPECT_EQ(label(kind), expected);
    EXPECT_EQ(label(Theme::Font::Kind::lineNumberFont), "Line numbers");
}

TEST(ThemeFont, FallsBackFromAStringThatNamesNone) {
    const auto system = Platform::Font::system(12);
    const auto usual = Platform::Font::userFixedPitch(12).value_or(
        Platform::Font::named("Menlo", 12).value_or(system));
    const auto& name = system.postScriptName;
    const std::pair<std::string, double> understood[] = {
        {name + "@@@@9.50", 9.5}, {name + "@@@@1e1", 10}, {name + "@@@@7@@@@8", 7}};
    for (const auto& [string, size] : understood) {
        const auto font = Theme::Font{.string = string}.platformFont();
        EXPECT_EQ(font.postScriptName, name) << string;
        EXPECT_EQ(font.pointSize, size) << string;
    }
    for (const auto& string :
         {name, name + "@@@@abc", name + "@@@@ 12", name + "@@@@12 ", name + "@@@@",
          name + "@@@@-1", name + "@@@@1e999", name + "@@@@12,5",
          std::string("No-Such-Font@@@@12.00"), std::string("@@@@12"), std::string(),
          std::string("\xff@@@@12"), name + "\0@@@@12"}) {
        const auto font = Theme::Font{.string = string}.platformFont();
        EXPECT_EQ(font.postScriptName, usual.postScriptName) << string;
        EXPECT_EQ(font.pointSize, 12) << string;
    }
    EXPECT_EQ(Theme::Font::of({.postScriptName = "Menlo-Regular", .pointSize = 12}).string,
              "Menlo-Regular@@@@12.00");
}

} // namespace
