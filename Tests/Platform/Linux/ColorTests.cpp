#include "Platform/Color.h"

#include <gmock/gmock.h>

using Platform::Color;
using testing::DoubleNear;
using testing::Pointwise;
using Space = Color::Space;

// The crayons of the macOS colour panel, as generic and as sRGB colours: there in 8 bits, and
// nothing beyond them.
TEST(Color, ConvertsGenericColorsAsMacOSShowsThem) {
    const std::pair<Color, std::vector<double>> crayons[] = {
        {Color::genericRGB(1, 0, 0), {255, 38, 0}},
        {Color::genericRGB(1, 0.5, 0), {255, 147, 0}},
        {Color::genericRGB(0.5, 1, 0), {142, 250, 0}},
        {Color::genericRGB(0, 0.5, 1), {0, 150, 255}},
        {Color::genericRGB(1, 0, 1), {255, 64, 255}},
        {Color::genericRGB(0.5, 0, 0), {148, 17, 0}},
        {Color::genericGray(0.5), {146, 146, 146}},
    };
    for (const auto& [color, shown] : crayons) {
        auto components = color.converted(Space::sRGB)->components();
        for (std::size_t i = 0; i < shown.size(); ++i)
            EXPECT_NEAR(255 * std::clamp(components.at(i), 0.0, 1.0), shown[i], 1.5);
    }
}

TEST(Color, ComesBackFromEveryOtherSpaceAlsoFromBeyondTheGamut) {
    for (const auto space : {Space::deviceRGB, Space::genericRGB, Space::deviceCMYK}) {
        for (const Color& color : {Color::sRGB(0.2, 0.4, 0.6), Color::sRGB(1.09, -0.25, 0.003),
                                   Color::sRGB(-1, -0.5, -2)}) {
            EXPECT_THAT(color.converted(space)->converted(Space::sRGB)->components(),
                        Pointwise(DoubleNear(1e-6), color.components()));
        }
    }
    const auto dark = Color::genericGray(-0.5);
    EXPECT_NEAR(dark.converted(Space::deviceRGB)->converted(Space::genericGray)->components()[0],
                -0.5, 1e-6);
}
