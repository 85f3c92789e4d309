#include "CorbelKit/Services/PrintableText.h"
#include "Platform/UTF8.h"

#include <gtest/gtest.h>

#include <utility>

using CorbelKit::printableText;

TEST(PrintableText, ShowsWhatWouldActOnTheDisplay) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", ""},
        {"plain ~/Library/x.plist", "plain ~/Library/x.plist"},
        {"a\nb\r\tc", "a\\nb\\r\\tc"},
        {"\x1B[2Jgone\x7F", "\\u{1B}[2Jgone\\u{7F}"},
        {"\u009B31m", "\\u{9B}31m"},
        {"evil\u202Etsilp.x", "evil\\u{202E}tsilp.x"},
        {"two\u2028lines", "two\\u{2028}lines"},
        {"\u05E9\u05DC\u05D5\u05DD \U0001F600", "\u05E9\u05DC\u05D5\u05DD \U0001F600"},
    };
    for (const auto& [bytes, shown] : cases)
        EXPECT_EQ(printableText(bytes), shown);
    EXPECT_EQ(printableText(std::string_view("a\0b", 3)), "a\\u{0}b");
}

TEST(PrintableText, ReplacesWhatIsNotUTF8AndLosesNothingBehindIt) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"\xFF", "\uFFFD"},
        {"a\xE9z", "a\uFFFDz"},                             // Latin-1
        {"\xC0\xAFz", "\uFFFD\uFFFDz"},                     // an overlong slash
        {"\xED\xA0\x80z", "\uFFFD\uFFFD\uFFFDz"},           // a surrogate
        {"\xF4\x90\x80\x80z", "\uFFFD\uFFFD\uFFFD\uFFFDz"}, // beyond the last character
        {"\xE2\x82", "\uFFFD"},                             // cut short
        {"\xE2\x82\x0A", "\uFFFD\\n"},                      // cut short by a line feed
    };
    for (const auto& [bytes, shown] : cases) {
        EXPECT_EQ(printableText(bytes), shown);
        EXPECT_FALSE(Platform::UTF8::isWellFormed(bytes));
    }
}
