// Writes a theme to a property list, or shows the one in it: theme-file write|show <file.plist>
#include "CorbelKit/Coding/PropertyListCoder.h"
#include "CorbelKit/Formats/Theme.h"
#include "CorbelKit/Formats/Themes.h"
#include "Platform/Color.h"
#include "Platform/FileContents.h"

#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string_view>

namespace {

using CorbelKit::Theme;
using Platform::URL;

constexpr std::size_t largestFile = 1 << 20;

/// Stockholm, on a warmer ground than it comes with. Gives what went wrong, if anything.
std::optional<Platform::Error> write(const URL& file) {
    const CorbelKit::Themes builtIn(std::nullopt);
    Theme theme = *builtIn.items().front();
    theme.background = Theme::Color::of(Platform::Color::sRGB(1, 0.98, 0.94));
    const auto bytes = CorbelKit::PropertyListEncoder::xml().encode(theme);
    return bytes ? Platform::FileContents::write(file, *bytes) : bytes.error().error();
}

// Colours are named in the user's language.
std::optional<Platform::Error> show(const URL& file) {
    const auto bytes = Platform::FileContents::read(file, largestFile);
    if (!bytes)
        return bytes.error();
    const auto theme = CorbelKit::PropertyListDecoder::shared().decode<Theme>(*bytes);
    if (!theme)
        return theme.error().error();
    using enum Theme::Color::Kind;
    for (const auto kind : {text, background, highlightLine, string, comment, keyword}) {
        const auto& color = theme->color(kind);
        std::cout << label(kind) << ": " << color.red << ' ' << color.green << ' ' << color.blue
                  << '\n';
    }
    return std::nullopt;
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view verb = argumentCount == 3 ? arguments[1] : "";
    if (verb != "write" && verb != "show") {
        std::cerr << "usage: theme-file write|show <file.plist>\n";
        return EXIT_FAILURE;
    }
    const auto file = URL::file(arguments[2]);
    if (const auto error = verb == "write" ? write(file) : show(file)) {
        std::cerr << error->description << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
