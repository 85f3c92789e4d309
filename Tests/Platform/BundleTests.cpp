#include "Platform/Bundle.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <vector>

using Platform::Bundle;
using Platform::URL;
using TestSupport::EnvironmentVariable;

namespace {

std::string propertyList(const std::string& content) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)" + content +
           "</dict></plist>";
}

std::string entry(const std::string& key, const std::string& text) {
    return "<key>" + key + "</key><string>" + text + "</string>";
}

/// A bundle folder that a test fills.
class BundleFolder {
public:
    void write(const std::string& path, const std::string& content) {
        std::filesystem::create_directories((folder_ / path).parent_path());
        TestSupport::writeFile(folder_ / path, content);
    }

    /// Adds a localisation whose text "Language" is its own name.
    void localize(const std::string& name) {
        write("Resources/" + name + ".lproj/Localizable.strings",
              propertyList(entry("Language", name)));
    }

    Bundle open() const { return Bundle(URL::file(folder_.path().string() + "/")); }

    const std::filesystem::path& path() const { return folder_.path(); }

private:
    TestSupport::TemporaryFolder folder_;
};

/// The user's languages, in the form of a list of locales.
class Languages {
public:
    explicit Languages(const std::string& list)
        : all_("LC_ALL", list.substr(0, list.find(':')))
        , list_("LANGUAGE", list) {}

private:
    EnvironmentVariable all_;
    EnvironmentVariable list_;
};

} // namespace

TEST(Bundle, ChoosesTheLocalisationThatSuitsTheUserBest) {
    struct Case {
        std::vector<std::string> available;
        std::string languages;
        std::string chosen;
    };

    const std::vector<Case> cases{
        {{"en", "pt", "pt-BR"}, "pt_BR", "pt-BR"},
        {{"en", "pt", "pt_BR"}, "pt_BR", "pt_BR"},
        {{"en", "pt"}, "pt_BR.UTF-8", "pt"},
        {{"en", "pt-BR"}, "pt_PT", "en"},
        {{"en", "zh-Hans", "zh-Hant"}, "zh_TW", "zh-Hant"},
        {{"en", "zh-Hans", "zh-Hant"}, "zh_HK", "zh-Hant"},
        {{"en", "zh-Hans", "zh-Hant"}, "zh_CN", "zh-Hans"},
        {{"en", "zh-Hans", "zh-Hant"}, "zh", "zh-Hans"},
        {{"en", "sr", "sr-Latn"}, "sr_RS@latin", "sr-Latn"},
        {{"en", "sr", "sr-Latn"}, "sr_RS", "sr"},
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

TEST(Bundle, GivesTheKeyWhereThereIsNoText) {
    BundleFolder folder;
    folder.write("Resources/en.lproj/Localizable.strings",
                 propertyList(entry("Key", "Text") + "<key>Number</key><integer>1</integer>"));
    folder.write("Resources/en.lproj/OldStyle.strings", "\"Key\" = \"Other text\";\n");
    folder.write("Resources/en.lproj/Broken.strings", "<plist><dict><key>Key</key><string>T");
    folder.write("Resources/en.lproj/Huge.strings",
                 propertyList(entry("Key", "Text") + std::string(9 << 20, ' ')));
    std::filesystem::create_directory(folder.path() / "Resources/en.lproj/Folder.strings");
    const Languages user("en");
    const auto bundle = folder.open();
    EXPECT_EQ(bundle.localizedString("Key"), "Text");
    EXPECT_EQ(bundle.localizedString("Missing"), "Missing");
    EXPECT_EQ(bundle.localizedString("Number"), "Number");
    EXPECT_EQ(bundle.localizedString("Key", "OldStyle"), "Other text");
    for (const auto* table : {"Missing", "Broken", "Huge", "Folder"})
        EXPECT_EQ(bundle.localizedString("Key", table), "Key") << table;
}

TEST(Bundle, OfTheProcessHoldsItsExecutable) {
    const auto executable = std::filesystem::canonical(CORBEL_BINARY_DIR).string();
    EXPECT_TRUE(Bundle::main().bundleURL().hasDirectoryPath());
    EXPECT_TRUE(Bundle::main().bundleURL().path().starts_with(executable));
}
