#include "Tests/Platform/BundleFolder.h"

#include <gtest/gtest.h>

using Platform::Bundle;

TEST(Bundle, GivesTheKeyWhereThereIsNoText) {
    BundleFolder folder;
    folder.write("Resources/en.lproj/Localizable.strings", propertyList(entry("Key", "Text")));
    folder.write("Resources/en.lproj/OldStyle.strings", "\"Key\" = \"Other text\";\n");
    folder.write("Resources/en.lproj/Broken.strings", "<plist><dict><key>Key</key><string>T");
    std::filesystem::create_directory(folder.path() / "Resources/en.lproj/Folder.strings");
    const Languages user("en");
    const auto bundle = folder.open();
    EXPECT_EQ(bundle.localizedString("Key"), "Text");
    EXPECT_EQ(bundle.localizedString("Missing"), "Missing");
    EXPECT_EQ(bundle.localizedString("Key", "OldStyle"), "Other text");
    for (const auto* table : {"Missing", "Broken", "Folder"})
        EXPECT_EQ(bundle.localizedString("Key", table), "Key") << table;
}

TEST(Bundle, IsReadWhereItsLayoutKeepsItsInformation) {
    const std::string content = propertyList(entry("CFBundleIdentifier", "org.example"));
    for (const auto* place :
         {"Contents/Info.plist", "Resources/Info.plist", "Versions/Current/Resources/Info.plist",
          "Support Files/Info.plist", "Info.plist"}) {
        BundleFolder folder;
        folder.write(place, content);
        const auto bundle = folder.open();
        EXPECT_EQ(bundle.text("CFBundleIdentifier"), "org.example") << place;
        EXPECT_EQ(bundle.text("CFBundleName"), "") << place;
        const auto information = Bundle::informationDictionary(bundle.bundleURL());
        ASSERT_TRUE(information) << place;
        EXPECT_EQ(information->at("CFBundleIdentifier"),
                  Platform::PropertyList(std::string("org.example")));
    }
}

TEST(Bundle, SaysNothingWhereThereIsNoneToRead) {
    BundleFolder folder;
    folder.write("Listed/Contents/Info.plist", "<plist><array/></plist>");
    folder.write("Damaged/Contents/Info.plist", "<plist><dict>");
    folder.write("Bare/Contents/MacOS/Bare", "");
    folder.write("Folder/Contents/Info.plist/Info.plist", "");
    folder.write("Cyclic/Contents/Other", "");
    std::filesystem::create_symlink("Info.plist", folder.path() / "Cyclic/Contents/Info.plist");
    for (const auto* name :
         {"Listed", "Damaged", "Bare", "Folder", "Cyclic", "None", "Bare/Contents/MacOS/Bare"}) {
        const auto url = Platform::URL::file((folder.path() / name).string());
        EXPECT_FALSE(Bundle::informationDictionary(url)) << name;
    }
    const auto elsewhere = Platform::URL::parse("https://example.org/Listed");
    EXPECT_FALSE(Bundle::informationDictionary(*elsewhere));
}
