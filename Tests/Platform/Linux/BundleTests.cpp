#include "Tests/Platform/BundleFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

TEST(Bundle, ChoosesTheLocalisationThatSuitsTheUserBest) {
    const std::tuple<std::vector<std::string>, std::string, std::string> cases[] = {
        {{"en", "pt", "pt-BR"}, "pt_BR", "pt-BR"},
        {{"en", "pt", "pt_BR"}, "pt_BR", "pt_BR"},
        {{"en", "pt-BR"}, "pt_PT", "en"},
        {{"en", "zh-Hans", "zh-Hant"}, "zh_HK", "zh-Hant"},
        {{"en", "zh-Hans", "zh-Hant"}, "zh_CN", "zh-Hans"},
        {{"en", "sr", "sr-Latn"}, "sr_RS@latin", "sr-Latn"},
        {{"en", "nb"}, "no_NO", "nb"},
        {{"en", "no"}, "nb_NO", "no"},
        {{"en", "de", "fr"}, "it:fr:de", "fr"},
        {{"en", "de"}, "it:xx", "en"},
        {{"de"}, "it", "Language"},
        {{}, "it", "Language"},
    };
    for (const auto& [available, languages, chosen] : cases) {
        BundleFolder folder;
        for (const auto& name : available)
            folder.localize(name);
        const Languages user(languages);
        EXPECT_EQ(folder.open().localizedString("Language"), chosen) << languages;
    }
}

TEST(Bundle, IsNotWaitedForAndOfNoSize) {
    BundleFolder folder;
    std::filesystem::create_directory(folder.path() / "Contents");
    const auto file = folder.path() / "Contents/Info.plist";
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    const auto url = folder.open().bundleURL();
    EXPECT_FALSE(Platform::Bundle::informationDictionary(url));
    std::filesystem::remove(file);
    folder.write("Contents/Info.plist", propertyList(entry("Key", std::string(9 << 20, ' '))));
    EXPECT_FALSE(Platform::Bundle::informationDictionary(url));
}
