#include "CorbelKit/Services/Appearance.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace {

using Platform::Appearance;
using Name = Appearance::Name;

struct View {
    Appearance effectiveAppearance() const { return Appearance(name); }

    std::optional<Name> name;
};

} // namespace

TEST(Appearance, IsDarkOnlyWhereItMatchesTheDarkOne) {
    const std::pair<std::optional<Name>, bool> cases[] = {
        {Name::darkAqua, true}, {Name::aqua, false}, {std::nullopt, false}};
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(CorbelKit::isDark(View{name}), expected);
}
