#include "CorbelKit/Formats/LineEnding.h"

#include <gtest/gtest.h>

using CorbelKit::LineEnding;

namespace {

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

} // namespace
