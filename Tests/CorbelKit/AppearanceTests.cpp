#include "CorbelKit/Services/Appearance.h"

#include <gtest/gtest.h>

TEST(Appearance, IsDarkOnlyWhereItMatchesTheDarkOne) {
    using Platform::Appearance;
    EXPECT_TRUE(CorbelKit::isDark(Appearance(Appearance::Name::darkAqua)));
    EXPECT_FALSE(CorbelKit::isDark(Appearance(Appearance::Name::aqua)));
    EXPECT_FALSE(CorbelKit::isDark(Appearance(std::nullopt)));
}
