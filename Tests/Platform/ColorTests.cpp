#include "Platform/Color.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <vector>

using Platform::Color;
using testing::DoubleNear;
using testing::Pointwise;
using Space = Color::Space;

namespace {

constexpr std::array everySpace = {Space::deviceRGB,  Space::genericRGB,  Space::sRGB,
                                   Space::deviceGray, Space::genericGray, Space::deviceCMYK,
                                   Space::pattern};

Color greyIn(Space space, double white) {
    return Color::deviceGray(white, 0.25).converted(space).value();
}

} // namespace

TEST(Color, ConvertsBlackAndWhiteToThemselvesInEverySpace) {
    constexpr double unseen = 0.01;
    const std::vector<std::pair<Space, Color::Components>> whites{
        {Space::deviceRGB, {1, 1, 1}}, {Space::genericRGB, {1, 1, 1}}, {Space::sRGB, {1, 1, 1}},
        {Space::deviceGray, {1}},      {Space::genericGray, {1}},
    };
    for (const auto& [space, white] : whites) {
        EXPECT_THAT(greyIn(space, 1).components(), Pointwise(DoubleNear(unseen), white));
        EXPECT_THAT(greyIn(space, 0).components(),
                    Pointwise(DoubleNear(unseen), Color::Components{}));
        EXPECT_EQ(greyIn(space, 1).alpha(), 0.25);
    }
}

TEST(Color, KeepsComponentsBeyondTheGamutWhereNothingIsConverted) {
    const auto bright = Color::sRGB(1.09, -0.25, 1e300, 1.09);
    EXPECT_EQ(bright.converted(Space::sRGB), bright);
    EXPECT_EQ(bright.converted(Space::sRGB)->components(), (Color::Components{1.09, -0.25, 1e300}));
    EXPECT_EQ(bright.converted(Space::deviceRGB)->alpha(), 1.09);
}

TEST(Color, ConvertsNoPatternAndNothingToOne) {
    for (const auto space : everySpace) {
        EXPECT_FALSE(Color::pattern().converted(space));
        EXPECT_FALSE(Color::sRGB(0, 0, 0).converted(Space::pattern));
    }
}

TEST(Color, StaysNoNumberInEveryOtherSpace) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double odd : {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity}) {
        for (const auto space : everySpace) {
            const auto converted = Color::deviceCMYK(0, odd, 0, 0).converted(space);
            EXPECT_TRUE(space == Space::deviceCMYK || !converted ||
                        std::isnan(converted->components().front()));
        }
    }
}
