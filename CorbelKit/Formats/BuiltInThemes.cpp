#include "CorbelKit/Formats/BuiltInThemes.h"

#include "Platform/Font.h"

#include <optional>
#include <string_view>

namespace CorbelKit {
namespace {

using Platform::Font;

Theme::Font menlo(double size) {
    return Theme::Font::of(Font::named("Menlo", size).value_or(Font::system(size)));
}

Theme::Font fixedPitch(double size) {
    auto font = Font::userFixedPitch(size);
    if (!font)
        font = Font::named("Menlo", size);
    return Theme::Font::of(font.value_or(Font::system(size)));
}

Theme::Font helvetica(double size) {
    return Theme::Font::of(Font::named("HelveticaNeue", size).value_or(Font::system(size)));
}

// NOLINTBEGIN(modernize-use-designated-initializers): rows of a table
Theme stockholm() {
    return {
        .command = {0, 0.24, 1, 1},
        .comment = {0, 0.69, 0.001, 1},
        .instruction = {0.42, 0.42, 0.43, 1},
        .keyword = {0.84, 0.41, 0.006, 1},
        .api = {0.25, 0.43, 0.45, 1},
        .variable = {0.73, 0, 0.74, 1},
        .string = {0.95, 0, 0, 1},
        .attribute = {0.5, 0.5, 0.2, 1},
        .text = {0, 0, 0, 1},
        .invisible = {0.5, 0.5, 0.5, 1},
        .background = {1, 1, 1, 1},
        .highlightLine = {0.96, 0.96, 0.71, 1},
        .lineNumberText = {0.333, 0.333, 0.333, 1},
        .lineNumberBackground = {0.969, 0.969, 0.973, 1},
        .lineNumberFont = menlo(10),
        .textFont = fixedPitch(12),
    };
}

Theme copenhagen() {
    return {
        .command = {0.171, 0.197, 0.615, 1},
        .comment = {0.509, 0.785, 0.469, 1},
        .instruction = {0.45, 0.45, 0.46, 1},
        .keyword = {0.84, 0.41, 0.006, 1},
        .api = {0.25, 0.43, 0.45, 1},
        .variable = {0.73, 0, 0.74, 1},
        .string = {0.875, 0.027, 0, 1},
        .attribute = {0.5, 0.5, 0.2, 1},
        .text = {0, 0, 0, 1},
        .invisible = {0.5, 0.5, 0.5, 1},
        .background = {0.99, 0.988, 0.944, 1},
        .highlightLine = {0.86, 0.901, 0.178, 1},
        .lineNumberText = {0.333, 0.333, 0.333, 1},
        .lineNumberBackground = {0.99, 0.988, 0.944, 1},
        .lineNumberFont = menlo(10),
        .textFont = helvetica(13),
    };
}

Theme oslo() {
    return {
        .command = {0.325, 0.647, 0.984, 1},
        .comment = {0.568, 0.831, 0.384, 1},
        .instruction = {0.423, 0.474, 0.525, 1},
        .keyword = {0.992, 0.56, 0.247, 1},
        .api = {0.988, 0.372, 0.639, 1},
        .variable = {0.588, 0.525, 0.96, 1},
        .string = {0.988, 0.415, 0.364, 1},
        .attribute = {0.458, 0.705, 0.572, 1},
        .text = {1, 1, 1, 1},
        .invisible = {0.5, 0.5, 0.5, 1},
        .background = {0.121, 0.121, 0.141, 1},
        .highlightLine = {0.141, 0.145, 0.168, 1},
        .lineNumberText = {0.66, 0.66, 0.66, 1},
        .lineNumberBackground = {0.101, 0.101, 0.121, 1},
        .lineNumberFont = menlo(10),
        .textFont = fixedPitch(12),
    };
}

Theme helsinki() {
    return {
        .command = {0, 0.626, 1, 1},
        .comment = {0.255, 0.801, 0.27, 1},
        .instruction = {0.36, 0.36, 0.37, 1},
        .keyword = {0.828, 0.095, 0.583, 1},
        .api = {0.25, 0.43, 0.45, 1},
        .variable = {0.73, 0, 0.74, 1},
        .string = {0.95, 0, 0, 1},
        .attribute = {0.247, 0.345, 0.454, 1},
        .text = {0, 0, 0, 1},
        .invisible = {0.5, 0.5, 0.5, 1},
        .background = {0.98, 0.98, 0.98, 1},
        .highlightLine = {0.98, 0.98, 0.73, 1},
        .lineNumberText = {0.333, 0.333, 0.333, 1},
        .lineNumberBackground = {0.969, 0.969, 0.973, 1.09},
        .lineNumberFont = menlo(10),
        .textFont = fixedPitch(16),
    };
}

// NOLINTEND(modernize-use-designated-initializers)

} // namespace

std::vector<std::shared_ptr<Theme>> builtInThemes() {
    std::vector<std::shared_ptr<Theme>> themes;
    for (const auto& make : {stockholm, copenhagen, oslo, helsinki})
        themes.push_back(std::make_shared<Theme>(make()));
    return themes;
}

} // namespace CorbelKit
