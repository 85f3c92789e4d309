#include "Platform/Color.h"

#include <gmock/gmock.h>

#include <cmath>

using Platform::Color;
using testing::DoubleNear;
using testing::Pointwise;
using Space = Color::Space;

namespace {

constexpr std::array everySpace = {Space::deviceRGB,  Space::genericRGB,  Space::sRGB,
                                   Space::deviceGray, Space::genericGray, Space::deviceCMYK,
                                   Space::pattern};

} // namespace

TEST(Color, ConvertsBlackAndWhiteToThemselvesInEverySpace) {
    constexpr double unseen = 0.01;
    for (const auto& [space, white] :
         {std::pair<Space, Color::Components>(Space::deviceRGB, {1, 1, 1}),
          {Space::genericRGB, {1, 1, 1}},
          {Space::sRGB, {1, 1, 1}},
          {Space::deviceGray, {1}},
          {Space::genericGray, {1}}}) {
        const auto lightest = Color::deviceGray(1, 0.25).converted(space).value();
        EXPECT_THAT(lightest.components(), Pointwise(DoubleNear(unseen), white));
        EXPECT_EQ(lightest.alpha(), 0.25);
        EXPECT_THAT(Color::deviceGray(0, 1).converted(space)->components(),
                    Pointwise(DoubleNear(unseen), Color::Components{}));
    }
}

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
