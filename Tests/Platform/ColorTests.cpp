#include "Platform/Color.h"

#include <gtest/gtest.h>

#include <cmath>

using Platform::Color;
using Space = Color::Space;

namespace {

constexpr std::array everySpace = {Space::deviceRGB,  Space::genericRGB,  Space::sRGB,
                                   Space::deviceGray, Space::genericGray, Space::deviceCMYK,
                                   Space::pattern};

} // namespace

TEST(Color, KeepsComponentsBeyondTheGamutWhereNothingIsConverted) {
    const auto bright = Color::sRGB(1.09, -0.25, 1e300, 1.09);
    EXPECT_EQ(bright.converted(Space::sRGB), bright);
    EXPECT_EQ(bright.converted(Space::sRGB)->components(), (Color::Components{1.09, -0.25, 1e300}));
    EXPECT_EQ(bright.converted(Space::deviceRGB)->alpha(), 1.09);
}

TEST(Color, StaysNoNumberAndNoPatternInEveryOtherSpace) {
    for (const double odd : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        for (const auto space : everySpace) {
            EXPECT_FALSE(Color::pattern().converted(space));
            const auto converted = Color::deviceCMYK(0, odd, 0, 0).converted(space);
            EXPECT_TRUE(space == Space::deviceCMYK || !converted ||
                        std::isnan(converted->components().front()));
        }
    }
}
