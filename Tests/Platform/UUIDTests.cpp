#include "Platform/UUID.h"

#include <gtest/gtest.h>

using Platform::UUID;

TEST(UUID, ComesBackFromItsTextAndFromNoOther) {
    const std::string text = "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6";
    const auto identifier = UUID::parse(text);
    ASSERT_TRUE(identifier);
    EXPECT_EQ(identifier->string(), text);
    EXPECT_EQ(UUID::parse("f81d4fae-7dec-11d0-a765-00a0c91e6bf6"), identifier);
    EXPECT_LT(*UUID::parse("081D4FAE-7DEC-11D0-A765-00A0C91E6BF6"), *identifier);
    for (const auto* bad :
         {"", "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF", "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6 ",
          "F81D4FAE7-DEC-11D0-A765-00A0C91E6BF6", "F81D4FAE-7DEC-11D0-A765-00A0C91E6BG6",
          "F81D4FAE-7DEC-11D0-A765-00A0C91E6B-6", "F81D4FAE-7DEC-11D0-A765-00A0C91E6B+6",
          "F81D4FAE-7DEC-11D0-A765-00A0C91E6B 6"})
        EXPECT_FALSE(UUID::parse(bad)) << bad;
}
