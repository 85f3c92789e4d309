#include "Platform/Base64.h"
#include "Tests/Support/Testing.h"

using namespace Platform;

namespace {

std::optional<std::string> decoded(std::string_view text) {
    const auto data = base64DecodedData(text);
    if (!data)
        return std::nullopt;
    return std::string(reinterpret_cast<const char*>(data->data()), data->size());
}

} // namespace

TEST(Base64, IsThatOfTheStandard) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {"\xFB\xEF\xBE\xFF", "++++/w=="}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(base64EncodedString(bytes), text);
        EXPECT_EQ(decoded(text), bytes);
    }
    EXPECT_EQ(decoded(" Zm\r\n9v\tYg = ="), "foob");
}

TEST(Base64, RefusesWhatIsNone) {
    for (const auto* text :
         {"Z", "Zg", "Zg=", "=", "====", "Zg==Zg==", "Zg=a", "Zm9v=", "Zm9-", "\xC3\xA9=="})
        EXPECT_FALSE(decoded(text)) << text;
}
