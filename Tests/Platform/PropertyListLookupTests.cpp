#include "Platform/PropertyList.h"
#include "Platform/PropertyListLookup.h"
#include "Tests/Platform/PropertyListSamples.h"

#include <gtest/gtest.h>

namespace {

using namespace PropertyListSamples;
using Platform::PropertyListLookup;

std::optional<std::string> lookUp(std::string_view content, std::size_t chunk,
                                  PropertyListLookup::Limits limits = {}) {
    PropertyListLookup lookup("Label", limits);
    for (std::size_t position = 0; position < content.size(); position += chunk)
        lookup.append(bytes(content.substr(position, chunk)));
    return lookup.finish();
}

TEST(PropertyListLookup, CutsTheTextAtACharacter) {
    const std::string list = "<dict><key>Label</key><string>a\u00E4\u20AC&amp;bc</string></dict>";
    const std::pair<std::size_t, std::string> cases[] = {
        {0, ""}, {2, "a"}, {3, "aä"}, {5, "aä"}, {6, "aä€"}, {7, "aä€&"}, {9, "aä€&bc"}};
    for (const auto& [limit, expected] : cases) {
        for (const std::size_t chunk : {std::size_t{1}, list.size()})
            EXPECT_EQ(lookUp(list, chunk, {.maximumText = limit}), expected) << limit;
    }
}

TEST(PropertyListLookup, KeepsOnlySoMuchOfAFormThatItMustReadWhole) {
    const std::string table = "Label = abc;";
    EXPECT_EQ(lookUp(table, 5, {.maximumBuffered = table.size()}), "abc");
    EXPECT_EQ(lookUp(table, 5, {.maximumBuffered = table.size() - 1}), std::nullopt);
}

TEST(PropertyListLookup, SaysWhenNothingCanBeFoundAnyMore) {
    PropertyListLookup lookup("Label");
    EXPECT_TRUE(lookup.append(bytes("<plist>")));
    EXPECT_FALSE(lookup.append(bytes("<array>")));
    EXPECT_FALSE(lookup.append(bytes("<dict><key>Label</key><string>a</string></dict>")));
    EXPECT_EQ(lookup.finish(), std::nullopt);
    const auto many = [](const std::string& text) {
        std::string all;
        while (all.size() < 100'000)
            all += text;
        return all;
    };
    for (const auto& other : {std::string(100'000, '\0'), many("\xCF\xFA\xED\xFE\x07"), many("{};"),
                              many("Lorem ipsum dolor. "), many("// a\n#include <a>\n")})
        EXPECT_FALSE(PropertyListLookup("Label").append(bytes(other))) << other.substr(0, 20);
}

TEST(PropertyListLookup, GivesNoListUpForItsBeginning) {
    const std::string list = R"(/* c */ { a = (<0A 1b>, "\U00e4\ud83d\uDE00\012", 'b\'', _.b); // c
        Label = "\u20AC"; "\303" = {}; })"
                             "\u00E4 = \u20AC; }";
    for (const auto& end :
         {list.substr(0, list.find("\u00E4 =")), std::string("Label = x\u20AC;")}) {
        const auto expected = lookUp(end, end.size());
        for (std::size_t part = 0; part <= end.size(); ++part) // what is looked at beforehand
            EXPECT_EQ(lookUp(std::string(16'384 - part, ' ') + end, 100'000), expected) << part;
    }
}

} // namespace
