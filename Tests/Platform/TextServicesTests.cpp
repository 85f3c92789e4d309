#include "Platform/TextServices.h"
#include "Tests/Support/EnvironmentVariable.h"

#include <gtest/gtest.h>

namespace TextServices = Platform::TextServices;

TEST(TextServices, CapitalizesEveryWord) {
    EXPECT_EQ(TextServices::capitalized("new job"), "New Job");
    EXPECT_EQ(TextServices::capitalized(""), "");
}

TEST(TextServices, LowersCapitalsAlikeInEveryLanguage) {
    const TestSupport::EnvironmentVariable language("LC_ALL", "tr_TR");
    EXPECT_EQ(TextServices::lowercased("ID.PLIST"), "id.plist");
    EXPECT_EQ(TextServices::lowercased("\xC3\x89T\xC3\x89"), "\xC3\xA9t\xC3\xA9");
    EXPECT_EQ(TextServices::lowercased(""), "");
}
