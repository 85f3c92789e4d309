// Draws the built-in themes as an editor shows them: theme-picture <file.png>
#include "ThemePicture/Canvas.h"

#include <array>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace ThemePicture {
namespace {

using CorbelKit::Theme;
using Kind = Theme::Color::Kind;

constexpr std::size_t columns = 2;
constexpr double margin = 24; // around and between the panels
constexpr double panelWidth = 540;
constexpr double panelHeight = 310;
constexpr double titleHeight = 30;
constexpr double gutterWidth = 38;
constexpr double inset = 8;
constexpr double lineSpacing = 1.3; // of the font's own height
constexpr std::size_t currentLine = 7;

/// Beneath each character, the letter of its kind.
struct SampleLine {
    std::string_view text;
    std::string_view kinds;
};

// The program with which the kit's reference begins.
constexpr std::array sample = {
    SampleLine{R"(// What a theme colours, as the user calls it)", //
               R"(/////////////////////////////////////////////)"},
    SampleLine{R"(#include "CorbelKit/Formats/Theme.h")", //
               R"(iiiiiiii sssssssssssssssssssssssssss)"},
    SampleLine{R"(#include <iostream>)", //
               R"(iiiiiiii ssssssssss)"},
    SampleLine{R"()", //
               R"()"},
    SampleLine{R"(int main() {)", //
               R"(kkk cccc    )"},
    SampleLine{R"(    using CorbelKit::Theme;)", //
               R"(    kkkkk aaaaaaaaa  aaaaa )"},
    SampleLine{R"(    using enum Theme::Color::Kind;)", //
               R"(    kkkkk kkkk aaaaa  aaaaa  aaaa )"},
    SampleLine{R"(    for (auto kind : {text, string, comment}))", //
               R"(    kkk  kkkk $$$$    ====  ======  =======  )"},
    SampleLine{R"(        std::cout << label(kind) << '\n';)", //
               R"(        aaa  aaaa    ccccc $$$$     ssss )"},
    SampleLine{R"(})", //
               R"( )"},
};

Kind kindOf(char letter) {
    switch (letter) {
    case '/':
        return Kind::comment;
    case 'i':
        return Kind::instruction;
    case '=':
        return Kind::attribute;
    case 's':
        return Kind::string;
    case 'c':
        return Kind::command;
    case 'k':
        return Kind::keyword;
    case '$':
        return Kind::variable;
    case 'a':
        return Kind::api;
    default:
        return Kind::text;
    }
}

// Spaces are shown by a character in their place.
Line shown(const SampleLine& sampleLine, const Theme& theme) {
    Line line;
    for (std::size_t i = 0; i < sampleLine.text.size(); ++i) {
        const char character = sampleLine.text[i];
        const bool isSpace = character == ' ';
        line.push_back({theme.color(isSpace ? Kind::invisible : kindOf(sampleLine.kinds[i])),
                        isSpace ? "·" : std::string(1, character)});
    }
    return line;
}

/// One theme's editor.
class Panel {
public:
    Panel(Canvas& canvas, const Theme& theme, const Rectangle& frame)
        : canvas_(canvas)
        , theme_(theme)
        , frame_(frame) {}

    void draw(const std::string& title) {
        canvas_.beginClip(frame_, 8);
        fill(frame_, Kind::background);
        fill({frame_.x, frame_.y, gutterWidth, frame_.height}, Kind::lineNumberBackground);
        double top = frame_.y + titleHeight + inset;
        const double height = canvas_.extent({{{}, "Hg"}}, font()).height * lineSpacing;
        for (std::size_t i = 0; i < sample.size(); ++i, top += height)
            drawLine(i, top, height);
        drawTitle(title);
        canvas_.endClip();
    }

private:
    Platform::Font font() const { return theme_.font(Theme::Font::Kind::textFont); }

    void fill(const Rectangle& area, Kind kind) { canvas_.fill(area, theme_.color(kind)); }

    void drawLine(std::size_t index, double top, double height) {
        const double textLeft = frame_.x + gutterWidth + inset;
        const double baseline = top + height * 0.72;
        auto line = shown(sample.at(index), theme_);
        if (index == currentLine) {
            fill({frame_.x + gutterWidth, top, frame_.width, height}, Kind::highlightLine);
            const double end = textLeft + canvas_.extent(line, font()).width;
            fill({end, top + 2, 1.5, height - 4}, Kind::text); // the insertion point
        }
        line.push_back({theme_.color(Kind::invisible), "¬"});
        canvas_.draw(line, font(), textLeft, baseline);
        const auto numberFont = theme_.font(Theme::Font::Kind::lineNumberFont);
        const Line number{{theme_.color(Kind::lineNumberText), std::to_string(index + 1)}};
        const double width = canvas_.extent(number, numberFont).width;
        canvas_.draw(number, numberFont, frame_.x + gutterWidth - inset - width, baseline);
    }

    void drawTitle(const std::string& title) {
        const Rectangle bar{frame_.x, frame_.y, frame_.width, titleHeight};
        fill(bar, Kind::lineNumberBackground);
        auto edge = theme_.color(Kind::invisible);
        edge.alpha = 0.35;
        canvas_.fill({bar.x, bar.y + bar.height - 0.5, bar.width, 0.5}, edge);
        const Line line{{theme_.color(Kind::text), title}};
        const auto font = Platform::Font::system(13);
        const double width = canvas_.extent(line, font).width;
        canvas_.draw(line, font, bar.x + (bar.width - width) / 2, bar.y + 20);
    }

    Canvas& canvas_;
    const Theme& theme_;
    const Rectangle frame_;
};

bool writePicture(const std::string& path) {
    const CorbelKit::Themes builtIn(std::nullopt);
    const auto& themes = builtIn.items();
    const std::size_t rows = (themes.size() + columns - 1) / columns;
    const double width = margin + columns * (panelWidth + margin);
    const double height = margin + static_cast<double>(rows) * (panelHeight + margin);
    Canvas canvas(width, height);
    canvas.fill({0, 0, width, height}, {.red = 0.82, .green = 0.82, .blue = 0.82, .alpha = 1});
    for (std::size_t i = 0; i < themes.size(); ++i) {
        const std::size_t row = i / columns;
        const std::size_t column = i % columns;
        const Rectangle frame{margin + static_cast<double>(column) * (panelWidth + margin),
                              margin + static_cast<double>(row) * (panelHeight + margin),
                              panelWidth, panelHeight};
        const auto city = static_cast<Theme::City>(i);
        Panel(canvas, *themes[i], frame).draw(std::string(Theme::displayName(city)));
    }
    return canvas.writePNG(path);
}

} // namespace
} // namespace ThemePicture

int main(int argumentCount, char** arguments) {
    const std::span values(arguments, static_cast<std::size_t>(argumentCount));
    if (values.size() != 2) {
        std::cerr << "usage: theme-picture <file.png>\n";
        return EXIT_FAILURE;
    }
    if (!ThemePicture::writePicture(values[1])) {
        std::cerr << values[1] << " cannot be written\n";
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
