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

TEST(Bundle, OfTheProcessHoldsItsExecutable) {
    const auto executable = std::filesystem::canonical(CORBEL_BINARY_DIR).string();
    EXPECT_TRUE(Bundle::main().bundleURL().hasDirectoryPath());
    EXPECT_TRUE(Bundle::main().bundleURL().path().starts_with(executable));
}
