#include "Platform/PropertyList.h"
#include "Tests/Support/Testing.h"

namespace {

using namespace TestSupport;
using Platform::PropertyList;

const fs::path resources = CORBEL_KIT_RESOURCES;

PropertyList::Dictionary readTable(const fs::path& localization) {
    const auto text = contentOf(localization / "Localizable.strings");
    return std::get<PropertyList::Dictionary>(PropertyList::read(bytesOf(text)).value().value());
}

/// Its keys, each with the places for arguments in the text.
std::map<std::string, std::size_t> shapeOf(const PropertyList::Dictionary& table, bool ofKeys) {
    std::map<std::string, std::size_t> shape;
    for (const auto& [key, value] : table) {
        const auto& text = std::get<std::string>(value.value());
        EXPECT_NE(text, "") << key;
        auto& count = shape[key];
        const auto& counted = ofKeys ? key : text;
        for (auto at = counted.find("%@"); at != std::string::npos; at = counted.find("%@", at + 1))
            ++count;
    }
    return shape;
}

// A slip in a table shows only to those who use the language, as English or as a missing name.
TEST(Localization, SaysEverythingInEveryLanguage) {
    const auto keys = shapeOf(readTable(resources / "en.lproj"), true);
    ASSERT_FALSE(keys.empty());
    for (const auto& localization : fs::directory_iterator(resources)) {
        if (localization.path().extension() == ".lproj") {
            EXPECT_EQ(shapeOf(readTable(localization), false), keys) << localization;
        }
    }
}

} // namespace
