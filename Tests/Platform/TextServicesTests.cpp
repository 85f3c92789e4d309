#include "Platform/TextServices.h"
#include "Tests/Support/Testing.h"

using namespace Platform::TextServices;
using namespace std::string_literals;

TEST(TextServices, NumberEncodingsOnEverySystemAsMacOSDoes) {
    for (const auto& [name, number] : {std::pair("utf-8", 4U),
                                       {"US-ASCII", 1},
                                       {"ISO-8859-15", 0x8000020F},
                                       {"macintosh", 30},
                                       {"UTF-16", 10},
                                       {"utf-16le", 0x94000100},
                                       {"UTF-32", 0x8C000100},
                                       {"ISO-2022-JP", 21},
                                       {"Shift_JIS", 0x80000A01},
                                       {"Windows-31J", 8},
                                       {"gb2312", 0x80000930},
                                       {"GB18030", 0x80000632},
                                       {"KOI8-R", 0x80000A02},
                                       {"IBM850", 0x80000410}})
        EXPECT_EQ(encodingForIANACharSetName(name), number) << name;
    for (const auto& name :
         {""s, "-"s, "klingon"s, "utf-8\0"s, "\0"s, "utf-8 x"s, "\xFF"s, std::string(100'000, 'u')})
        EXPECT_EQ(encodingForIANACharSetName(name), std::nullopt) << name;
}

TEST(TextServices, LowerLettersAlikeInEveryLanguage) {
    const TestSupport::EnvironmentVariable language("LC_ALL", "tr_TR");
    EXPECT_EQ(lowercased("ID.PLIST ÉTÉ"), "id.plist été");
}
