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

std::optional<std::string> readAndFind(std::string_view content) {
    const auto list = read(content);
    const auto* const label = list ? list->find("Label") : nullptr;
    const auto* const found = label != nullptr ? label->get<std::string>() : nullptr;
    return found != nullptr ? std::optional(*found) : std::nullopt;
}

TEST(PropertyListLookup, FindsExactlyWhatReadingFindsHoweverTheBytesCome) {
    std::mt19937 random(3);
    std::size_t found = 0;
    const auto check = [&](const std::string& content) {
        const auto expected = readAndFind(content);
        found += expected ? 1 : 0;
        for (const std::size_t chunk : {std::size_t{1}, std::size_t{7}, content.size() + 1})
            ASSERT_EQ(lookUp(content, chunk), expected) << chunk << "\n" << content;
    };
    for (const auto& list : lists()) {
        check(list);
        for (int round = 0; round < 1000; ++round)
            check(mutated(list, random));
    }
    EXPECT_GT(found, 1000U);
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
}

} // namespace
