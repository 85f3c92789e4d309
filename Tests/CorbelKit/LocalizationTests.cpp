#include "Platform/PropertyList.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace {

using Platform::PropertyList;
namespace fs = std::filesystem;

const fs::path resources = CORBEL_KIT_RESOURCES;

PropertyList::Dictionary readTable(const fs::path& localization) {
    const auto text = TestSupport::contentOf(localization / "Localizable.strings");
    const auto list = PropertyList::read(std::as_bytes(std::span(text)));
    const auto* table = list ? list->get<PropertyList::Dictionary>() : nullptr;
    return table != nullptr ? *table : PropertyList::Dictionary{};
}

std::vector<std::string> keysOf(const PropertyList::Dictionary& table) {
    std::vector<std::string> keys;
    for (const auto& [key, text] : table)
        keys.push_back(key);
    return keys;
}

std::size_t argumentsIn(std::string_view text) {
    std::size_t count = 0;
    for (auto at = text.find("%@"); at != std::string_view::npos; at = text.find("%@", at + 1))
        ++count;
    return count;
}

// A slip in a table shows only to those who use the language, as English or as a missing name.
TEST(Localization, SaysEverythingInEveryLanguage) {
    const auto keys = keysOf(readTable(resources / "en.lproj"));
    ASSERT_FALSE(keys.empty());
    for (const auto& localization : fs::directory_iterator(resources)) {
        if (localization.path().extension() != ".lproj")
            continue;
        SCOPED_TRACE(localization.path().filename());
        const auto table = readTable(localization);
        EXPECT_THAT(keysOf(table), testing::ElementsAreArray(keys));
        for (const auto& [key, value] : table) {
            const auto* text = value.get<std::string>();
            ASSERT_TRUE(text != nullptr && !text->empty()) << key;
            EXPECT_EQ(argumentsIn(*text), argumentsIn(key)) << *text;
        }
    }
}

} // namespace
