#include "CorbelKit/Services/PrintableText.h"
#include "Platform/UTF8.h"

#include <gtest/gtest.h>

TEST(PrintableText, ShowsWhatWouldActOnTheDisplayAndReplacesOnlyWhatIsNotUTF8) {
    using namespace std::string_view_literals;
    const std::tuple<std::string_view, std::string_view, bool> cases[] = {
        {"", "", true},
        {"plain ~/Library/x.plist", "plain ~/Library/x.plist", true},
        {"a\nb\r\tc\0d"sv, "a\\nb\\r\\tc\\u{0}d", true},
        {"\x1B[2Jgone\x7F", "\\u{1B}[2Jgone\\u{7F}", true},
        {"\u009B31m", "\\u{9B}31m", true},
        {"evil\u202Etsilp.x", "evil\\u{202E}tsilp.x", true},
        {"two\u2028lines", "two\\u{2028}lines", true},
        {"\u05E9\u05DC \U0001F600", "\u05E9\u05DC \U0001F600", true},
        {"a\u00ADb\uFEFF\U000E0041", "a\\u{AD}b\\u{FEFF}\\u{E0041}", true},
        {"\u0645\u06CC\u200C\u062E", "\u0645\u06CC\u200C\u062E", true},         // Persian
        {"\u2764\uFE0F\u200D\U0001F525", "\u2764\uFE0F\u200D\U0001F525", true}, // one picture
        {"a\u200Db\uFE0F\uFE0F", "a\\u{200D}b\\u{FE0F}\\u{FE0F}", true},
        {"\u2764\uFE0F\uFE0F", "\u2764\uFE0F\\u{FE0F}", true},
        {"\xFF", "\uFFFD", false},
        {"a\xE9z", "a\uFFFDz", false},                             // Latin-1
        {"\xC0\xAFz", "\uFFFD\uFFFDz", false},                     // an overlong slash
        {"\xED\xA0\x80z", "\uFFFD\uFFFD\uFFFDz", false},           // a surrogate
        {"\xF4\x90\x80\x80z", "\uFFFD\uFFFD\uFFFD\uFFFDz", false}, // beyond the last character
        {"\xE2\x82", "\uFFFD", false},                             // cut short
        {"\xE2\x82\x0A", "\uFFFD\\n", false},                      // cut short by a line feed
    };
    for (const auto& [bytes, shown, isText] : cases) {
        EXPECT_EQ(CorbelKit::printableText(bytes), shown);
        EXPECT_EQ(Platform::UTF8::isWellFormed(bytes), isText) << shown;
    }
}
