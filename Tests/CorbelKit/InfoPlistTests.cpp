#include "CorbelKit/Coding/PropertyListCoder.h"
#include "CorbelKit/Services/InfoPlist.h"
#include "Tests/Platform/BundleFolder.h"

#include <gtest/gtest.h>

using CorbelKit::InfoPlist;

TEST(InfoPlist, IsWhatABundleHasToSayAndMaySayAndElseAbsent) {
    const auto identifier = entry("CFBundleIdentifier", "org.example.app");
    const auto least = identifier + entry("CFBundleVersion", "7");
    const InfoPlist leastInfo{
        .build = "7", .executable = {}, .version = {}, .identifier = "org.example.app"};
    auto wholeInfo = leastInfo;
    wholeInfo.executable = "App";
    wholeInfo.version = "1.0";
    const std::pair<std::string, std::optional<InfoPlist>> cases[] = {
        {least, leastInfo},
        {least + entry("CFBundleExecutable", "App") + entry("CFBundleShortVersionString", "1.0") +
             "<key>Other</key><array><date>2026-01-01T00:00:00Z</date></array>",
         wholeInfo},
        {identifier, {}},
        {entry("CFBundleVersion", "7"), {}},
        {least + "<key>CFBundleExecutable</key><integer>1</integer>", {}},
        {identifier + "<key>CFBundleVersion</key><real>7</real>", {}},
    };
    for (const auto& [content, info] : cases) {
        BundleFolder bundle;
        bundle.write("Contents/Info.plist", propertyList(content));
        EXPECT_EQ(InfoPlist::at(bundle.open().bundleURL()), info) << content;
        EXPECT_EQ(InfoPlist::of(bundle.open()), info) << content;
    }
    EXPECT_FALSE(InfoPlist::at(BundleFolder().open().bundleURL()));
    const auto bytes = CorbelKit::PropertyListEncoder::xml().encode(wholeInfo);
    EXPECT_EQ(*CorbelKit::PropertyListDecoder::shared().decode<InfoPlist>(*bytes), wholeInfo);
}
