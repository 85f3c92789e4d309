#include "CorbelKit/Coding/Coding.h"
#include "CorbelKit/Formats/BuiltInThemes.h"
#include "CorbelKit/Formats/Themes.h"
#include "CorbelKit/Services/NotificationCenter.h"
#include "Tests/Support/MainLoop.h"
#include "Tests/Support/Testing.h"

using namespace CorbelKit;
using namespace TestSupport;
using namespace std::string_literals;
using Platform::PropertyList;

namespace {

std::vector<Theme> values(const std::vector<std::shared_ptr<Theme>>& items) {
    std::vector<Theme> values;
    for (const auto& item : items)
        values.push_back(*item);
    return values;
}

class ThemesTest : public ::testing::Test {
protected:
    /// The themes in the file, of which only those of a whole file are not the built-in ones.
    std::vector<Theme> themesIn(std::string_view name) const {
        return values(Themes(fileURL(folder / name)).items());
    }

    /// The built-in themes as a file that somebody has changed.
    Platform::URL alteredFile(const std::function<void(PropertyList::Array&)>& alter) const {
        auto list = *encoded(builtIn, CodingFormat::propertyList);
        alter(std::get<PropertyList::Array>(list.value()));
        writeFile(folder / "altered", textOf(*list.write(PropertyList::Format::xml)));
        return fileURL(folder / "altered");
    }

    static PropertyList::Dictionary& entry(PropertyList& dictionary, const std::string& key) {
        auto& entries = std::get<PropertyList::Dictionary>(dictionary.value());
        return std::get<PropertyList::Dictionary>(entries.at(key).value());
    }

    const TemporaryFolder folder;
    const std::vector<Theme> builtIn = values(builtInThemes());
};

TEST_F(ThemesTest, AreSavedByTheNamesOfTheirParts) {
    PropertyList::Dictionary form{
        {"lineNumberFont", PropertyList::Dictionary{{"string", "L@@@@1"s}}},
        {"textFont", PropertyList::Dictionary{{"string", "T@@@@2"s}}}};
    for (const auto* name : {"command", "comment", "instruction", "keyword", "api", "variable",
                             "string", "attribute", "text", "invisible", "background",
                             "highlightLine", "lineNumberText", "lineNumberBackground"}) {
        form[name] =
            PropertyList::Dictionary{{"red", 0.0}, {"green", 0.0}, {"blue", 0.0}, {"alpha", 1.09}};
    }
    Theme theme;
    theme.lineNumberFont.string = "L@@@@1";
    theme.textFont.string = "T@@@@2";
    for (auto kind = 0; kind <= static_cast<int>(Theme::Color::Kind::attribute); ++kind)
        theme.color(static_cast<Theme::Color::Kind>(kind)).alpha = 1.09;
    EXPECT_EQ(*encoded(theme, CodingFormat::propertyList), PropertyList(form));
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
        EXPECT_EQ(values(Themes(alteredFile(alter)).items()), builtIn);
    writeFile(folder / "broken", "<plist><dict/></plist>");
    EXPECT_EQ(themesIn("broken"), builtIn);
    EXPECT_EQ(themesIn("missing"), builtIn);
    EXPECT_EQ(values(Themes(std::nullopt).items()), builtIn);
}

TEST_F(ThemesTest, CanBeNoneAndThenHaveNoCurrentOne) {
    const Themes themes(alteredFile([](auto& list) { list.clear(); }));
    EXPECT_TRUE(themes.items().empty());
    EXPECT_DEATH(static_cast<void>(themes.current()), "no theme to choose from");
}

TEST_F(ThemesTest, NotifyOfAndSaveEachChange) {
    std::vector<std::string_view> notified;
    std::vector<Platform::Observation> observations;
    for (const auto name :
         {Themes::themeColorChanged, Themes::textFontChanged, Themes::lineNumberFontChanged}) {
        observations.push_back(NotificationCenter::defaultCenter().addObserver(
            name, [&notified, name] { notified.push_back(name); }));
    }
    Themes themes(fileURL(folder / "Themes.plist"));
    auto& theme = *themes.items()[1];
    EXPECT_FALSE(fs::exists(folder / "Themes.plist"));
    themes.setColor(theme, Theme::Color::Kind::api,
                    Platform::Color::deviceRGB(0.1, 1.5, -0.3, 0.4));
    EXPECT_EQ(theme.api, (Theme::Color{.red = 0.1, .green = 1.5, .blue = -0.3, .alpha = 0.4}));
    const Platform::Font font{.postScriptName = "Some-Font", .pointSize = 12.345};
    themes.setFont(theme, Theme::Font::Kind::textFont, font);
    themes.setFont(theme, Theme::Font::Kind::lineNumberFont, font);
    EXPECT_EQ(theme.textFont.string.substr(0, 16), "Some-Font@@@@12.");
    EXPECT_EQ(theme.textFont, theme.lineNumberFont);
    EXPECT_THAT(notified, testing::ElementsAre("ThemeColorChanged", "TextFontChanged",
                                               "LineNumberFontChanged", "LineNumberFontChanged"));
    drainMainLoop();
    EXPECT_TRUE(contentOf(folder / "Themes.plist").starts_with("bplist00"));
    EXPECT_EQ(themesIn("Themes.plist"), values(themes.items()));
}

// Where no bundle translates, the keys stand for themselves.
TEST(ThemeLabel, HasOneCapitalInWhatIsShownAsASentence) {
    using Kind = Theme::Color::Kind;
    EXPECT_EQ(label(Kind::lineNumberBackground), "Line numbers — Background");
    EXPECT_EQ(label(Kind::invisible), "Invisible characters (·  ¬  ¶)");
    EXPECT_EQ(label(Kind::string), "\"String\"");
    EXPECT_EQ(label(Theme::Font::Kind::lineNumberFont), "Line numbers");
}

TEST(ThemeFont, FallsBackFromAStringThatNamesNone) {
    const auto& name = Platform::Font::system(12).postScriptName;
    for (const auto& [string, size] :
         {std::pair(name + "@@@@9.50", 9.5), {name + "@@@@1e1", 10}, {name + "@@@@7@@@@8", 7}}) {
        const Platform::Font font{.postScriptName = name, .pointSize = size};
        EXPECT_EQ(Theme::Font{.string = string}.platformFont(), font) << string;
    }
    const auto usual = Platform::Font::userFixedPitch(12).value_or(
        Platform::Font::named("Menlo", 12).value_or(Platform::Font::system(12)));
    for (const auto& string :
         {name, name + "@@@@abc", name + "@@@@ 12", name + "@@@@12 ", name + "@@@@",
          name + "@@@@-1", name + "@@@@1e999", name + "@@@@12,5", "No-Such-Font@@@@12.00"s,
          "@@@@12"s, ""s, "\xff@@@@12"s, name + "\0@@@@12"})
        EXPECT_EQ(Theme::Font{.string = string}.platformFont(), usual) << string;
    EXPECT_EQ(Theme::Font::of({.postScriptName = "Menlo-Regular", .pointSize = 12}).string,
              "Menlo-Regular@@@@12.00");
}

} // namespace
