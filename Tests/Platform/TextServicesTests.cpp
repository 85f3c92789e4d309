#include "Platform/TextServices.h"
#include "Tests/Support/EnvironmentVariable.h"

#include <gtest/gtest.h>

namespace TextServices = Platform::TextServices;

TEST(TextServices, CapitalizesEveryWord) {
    EXPECT_EQ(TextServices::capitalized("new job in folder"), "New Job In Folder");
    EXPECT_EQ(TextServices::capitalized(""), "");
}

TEST(TextServices, LowersCapitalsAlikeInEveryLanguage) {
    const TestSupport::EnvironmentVariable language("LC_ALL", "tr_TR");
    EXPECT_EQ(TextServices::lowercased("ID.PLIST"), "id.plist");
    EXPECT_EQ(TextServices::lowercased("\xC3\x89T\xC3\x89"), "\xC3\xA9t\xC3\xA9");
    EXPECT_EQ(TextServices::lowercased(""), "");
}

TEST(TextServices, NumbersEncodingsOnEverySystemAsMacOSDoes) {
    const std::pair<std::string, TextServices::EncodingNumber> cases[] = {
        {"utf-8", 4},
        {"US-ASCII", 1},
        {"latin1", 5},
        {"ISO-8859-2", 9},
        {"ISO-8859-15", 0x8000020F},
        {"windows-1252", 12},
        {"macintosh", 30},
        {"UTF-16", 10},
        {"utf-16le", 0x94000100},
        {"UTF-32", 0x8C000100},
        {"EUC-JP", 3},
        {"ISO-2022-JP", 21},
        {"Shift_JIS", 0x80000A01},
        {"Windows-31J", 8},
        {"gb2312", 0x80000930},
        {"GBK", 0x80000631},
        {"GB18030", 0x80000632},
        {"Big5", 0x80000A03},
        {"EUC-KR", 0x80000940},
        {"KOI8-R", 0x80000A02},
        {"IBM850", 0x80000410}};
    for (const auto& [name, number] : cases)
        EXPECT_EQ(TextServices::encodingForIANACharSetName(name), number) << name;
}

TEST(TextServices, KnowsNoEncodingByWhatIsNoName) {
    using namespace std::string_literals;
    for (const auto& name :
         {""s, "-"s, "klingon"s, "utf-8\0"s, "\0"s, "utf-8 x"s, "\xFF"s, std::string(100'000, 'u')})
        EXPECT_EQ(TextServices::encodingForIANACharSetName(name), std::nullopt) << name;
}

TEST(TextServices, OrdersNamesForTheUser) {
    const std::vector<std::string> sorted{"", "apple", "Banana", "File9", "file10", "File10a"};
    for (std::size_t second = 0; second < sorted.size(); ++second) {
        EXPECT_TRUE(TextServices::localizedStandardCompare(sorted[second], sorted[second]) == 0);
        for (std::size_t first = 0; first < second; ++first) {
            EXPECT_TRUE(TextServices::localizedStandardCompare(sorted[first], sorted[second]) < 0)
                << sorted[first] << " " << sorted[second];
            EXPECT_TRUE(TextServices::localizedStandardCompare(sorted[second], sorted[first]) > 0);
        }
    }
}
