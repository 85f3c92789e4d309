#include "CorbelKit/Coding/PropertyListCoder.h"
#include "CorbelKit/Services/InfoPlist.h"
#include "Tests/Platform/BundleFolder.h"

#include <gtest/gtest.h>

using CorbelKit::InfoPlist;

namespace {

const std::string identifier = entry("CFBundleIdentifier", "org.example.app");
const std::string build = entry("CFBundleVersion", "7");

std::optional<InfoPlist> infoOf(const std::string& content) {
    BundleFolder bundle;
    bundle.write("Contents/Info.plist", content);
    const auto url = bundle.open().bundleURL();
    const auto fromDisk = InfoPlist::at(url);
    EXPECT_EQ(fromDisk, InfoPlist::of(bundle.open()));
    return fromDisk;
}

TEST(InfoPlist, HoldsWhatABundleHasToSayAndMaySay) {
    const InfoPlist least{
        .build = "7", .executable = {}, .version = {}, .identifier = "org.example.app"};
    auto whole = least;
    whole.executable = "App";
    whole.version = "1.0";
    EXPECT_EQ(infoOf(propertyList(identifier + build)), least);
    EXPECT_EQ(
        infoOf(propertyList(identifier + build + entry("CFBundleExecutable", "App") +
                            entry("CFBundleShortVersionString", "1.0") +
                            "<key>Other</key><array><date>2026-01-01T00:00:00Z</date></array>")),
        whole);
    const auto bytes = CorbelKit::PropertyListEncoder::xml().encode(whole);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(*CorbelKit::PropertyListDecoder::shared().decode<InfoPlist>(*bytes), whole);
}

TEST(InfoPlist, IsAbsentWhereABundleDoesNotSayWhatItIs) {
    const std::string broken[] = {
        propertyList(identifier),
        propertyList(build),
        propertyList(identifier + build + "<key>CFBundleExecutable</key><integer>1</integer>"),
        propertyList(identifier + "<key>CFBundleVersion</key><real>7</real>"),
    };
    for (const auto& content : broken)
        EXPECT_FALSE(infoOf(content)) << content;
    EXPECT_FALSE(InfoPlist::at(BundleFolder().open().bundleURL()));
}

} // namespace
