#include "Tests/CorbelKit/LineEndingForms.h"

#include <gtest/gtest.h>

#include <random>

using CorbelKit::LineEnding;

namespace {

using namespace std::string_literals;

TEST(LineEnding, HandsBackTheTextItselfWhereNothingIsToBeDone) {
    const std::string line(200, 'x');
    for (const auto& [target, ending] :
         {std::pair(LineEnding::unix, "\n"), std::pair(LineEnding::windows, "\r\n"),
          std::pair(LineEnding::macOS9, "\r")}) {
        auto text = line + ending + line + ending;
        const auto* const bytes = text.data();
        EXPECT_EQ(converted(std::move(text), target).data(), bytes) << ending;
    }
}

TEST(LineEndingDifferential, AgreesWithReplacementsMadeOneAfterTheOther) {
    const std::string pieces[] = {
        "\r", "\n", "\r\n", "a", "é", "¶", "\0"s, "\xFF", "\xC2", "😀", std::string(150, 'x')};
    std::mt19937 random(45);
    for (int round = 0; round < 10'000; ++round) {
        std::string text;
        for (auto length = random() % 40; length > 0; --length)
            text += pieces[random() % std::size(pieces)];
        ASSERT_EQ(forms(text), replacedForms(text)) << testing::PrintToString(text);
    }
}

} // namespace
