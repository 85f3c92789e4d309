#include "Platform/Font.h"

#include <gtest/gtest.h>

#include <cmath>

using Platform::Font;

TEST(Font, TakesNoSizeThatCannotBeDrawn) {
    const auto name = Font::system(12).postScriptName;
    for (const double size : {0.0, -0.0, -12.0, HUGE_VAL, std::nan("")}) {
        EXPECT_FALSE(Font::named(name, size)) << size;
        EXPECT_FALSE(Font::userFixedPitch(size)) << size;
        EXPECT_GT(Font::system(size).pointSize, 0) << size;
    }
    EXPECT_EQ(Font::system(0.5).pointSize, 0.5);
}

TEST(Font, IsAbsentForNamesThatNoFontHas) {
    using namespace std::string_literals;
    const auto installed = Font::userFixedPitch(12).value_or(Font{}).postScriptName;
    for (const std::string& name :
         {std::string(), std::string(1'000'000, 'a'), std::string(1'000'000, ':'), installed + '\0',
          installed + '\0' + "x", installed + ",", installed + ":bold", installed + "-12",
          installed + "\xFF", "\xC0\x80"s, "monospace"s, "*"s, "/etc/fonts/fonts.conf"s, "%n%s"s})
        EXPECT_FALSE(Font::named(name, 12)) << name.substr(0, 40);
}
