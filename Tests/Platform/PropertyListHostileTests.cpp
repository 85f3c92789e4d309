#include "Platform/PropertyList.h"
#include "Platform/PropertyListLookup.h"
#include "Tests/Platform/PropertyListSamples.h"
#include "Tests/Support/PeakMemory.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using namespace PropertyListSamples;
using Platform::PropertyListLookup;

std::optional<std::string> labelOf(std::string_view content) {
    PropertyListLookup lookup("Label");
    lookup.append(bytes(content));
    return lookup.finish();
}

TEST(PropertyListHostile, MillionsOfNestedContainersNeitherOverflowNorPass) {
    constexpr std::size_t count = 1'000'000;
    const std::vector<std::string> deepLists = {
        "<plist>" + repeated("<array>", count) + repeated("</array>", count) + "</plist>",
        repeated("<dict><key>Label</key>", count) + repeated("</dict>", count),
        repeated("(", count) + repeated(")", count),
        repeated("{Label=", count) + repeated(";}", count),
    };
    for (const auto& list : deepLists) {
        EXPECT_FALSE(read(list));
        EXPECT_FALSE(labelOf(list));
    }
}

TEST(PropertyListHostile, ABinaryListWithinItselfEnds) {
    for (const auto& list : {binary({"\xA1\0"s}), binary({"\xD1\x01\0"s, ascii("Label")}),
                             binary({"\xD1\x01\x02", ascii("Label"), "\xA1\x03", "\xA1\x02"})}) {
        EXPECT_FALSE(read(list));
        EXPECT_FALSE(labelOf(list));
    }
}

TEST(PropertyListHostile, SharedReferencesThatUnfoldWithoutEndAreRefusedSoon) {
    constexpr int levels = 45; // 4^45 values, about 10^27
    std::vector<std::string> objects = {"\xD2\x01\x02\x02\x03", ascii("Label"), ascii("x")};
    for (int level = 0; level < levels; ++level)
        objects.push_back(std::string("\xA4").append(4, static_cast<char>(objects.size() + 1)));
    objects.emplace_back("\x09");
    EXPECT_FALSE(read(binary(objects)));
    EXPECT_FALSE(labelOf(binary(objects)));
}

TEST(PropertyListHostile, FortyMegabytesOfAnythingPassByInLittleMemory) {
    constexpr std::size_t total = std::size_t{40} << 20;
    constexpr std::string_view end = "<key>Label</key><string>x</string></dict>";
    using Text = std::string_view;
    const std::vector<std::tuple<Text, Text, Text, bool>> floods = {
        {"<dict><key>Label</key><string>", "xxxxxxxx", "</string></dict>", true},
        {"<dict><key>", "xxxxxxxx", "</key><true/><key>Label</key><string>x</string></dict>", true},
        {"<dict><key>x</key><data>", "AAAABBBB", "</data><key>Label</key><string>x</string></dict>",
         true},
        {"<dict>", "<key>a</key><true/>", end, true},
        {"<dict>", "<!-- x -->", end, true},
        {"<dict><key>x</key><integer>", "00000000", "</integer></dict>", false},
        {"<dict><!--", "xxxxxxxx", "--></dict>", false},
        {"<dict><", "xxxxxxxx", "/></dict>", false},
        {"<dict a='", "xxxxxxxx", "'></dict>", false},
        {"<?x ", "xxxxxxxx", "?><dict></dict>", false},
        {"<!DOCTYPE dict SYSTEM '", "xxxxxxxx", "'><dict></dict>", false},
        {"{ Label = '", "xxxxxxxx", "';}", false},
    };
    for (const auto& [listBegin, unit, listEnd, isList] : floods) {
        const auto chunk = repeated(unit, 65536 / unit.size());
        const auto before = TestSupport::peakMemory();
        PropertyListLookup lookup("Label");
        lookup.append(bytes(listBegin));
        for (std::size_t fed = 0; fed < total; fed += chunk.size())
            lookup.append(bytes(chunk));
        lookup.append(bytes(listEnd));
        EXPECT_EQ(lookup.finish().has_value(), isList) << listBegin;
        EXPECT_LT(TestSupport::peakMemory() - before, 24L << 20) << listBegin;
    }
}

TEST(PropertyListHostile, AttributesWithoutEndAreRefused) {
    std::string list = "<array>";
    for (int number = 0; number < 100'000; ++number)
        list.append("<true a").append(std::to_string(number)).append("=''/>");
    EXPECT_FALSE(read(list + "</array>"));
}

} // namespace
