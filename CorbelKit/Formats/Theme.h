#pragma once

#include "CorbelKit/Coding/Decoder.h"
#include "CorbelKit/Coding/Encoder.h"
#include "Platform/Color.h"
#include "Platform/Font.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace CorbelKit {

/// A scheme of colours and fonts for text views: one colour for each class of syntax and each part
/// of the editing surface. Coded under the names of its fields. Main thread.
struct Theme {
    /// In the device RGB colour space. Meant to lie between 0 and 1, but kept as it is.
    struct Color {
        double red = 0;   ///< 0 is none, 1 the most that the display has
        double green = 0; ///< 0 is none, 1 the most that the display has
        double blue = 0;  ///< 0 is none, 1 the most that the display has
        double alpha = 0; ///< 0 cannot be seen, 1 is opaque

        /// The colours in the order in which they are listed to the user.
        enum class Kind : std::uint8_t {
            text,
            background,
            lineNumberText,
            lineNumberBackground,
            invisible,
            highlightLine,
            string,
            command,
            comment,
            variable,
            keyword,
            api,
            instruction,
            attribute,
        };

        /// The nearest that there is: what has no colour in any RGB space becomes the colour of
        /// labels.
        static Color of(const Platform::Color& color);

        /// The same as a colour of the system.
        Platform::Color platformColor() const;

        static Color decode(const Decoder& decoder);
        void encode(Encoder& encoder) const;

        friend bool operator==(const Color&, const Color&) = default;
    };

    /// A font by its name, which the machine need not have.
    struct Font {
        /// What the fonts of a theme are for.
        enum class Kind : std::uint8_t { textFont, lineNumberFont };

        /// PostScript name and size: "Menlo-Regular@@@@12.00".
        std::string string;

        /// The name and size of a font of this machine.
        static Font of(const Platform::Font& font);

        /// Where the string names no font that there is: the user's fixed-pitch font, else Menlo,
        /// else the system's, at 12 points.
        Platform::Font platformFont() const;

        static Font decode(const Decoder& decoder);
        void encode(Encoder& encoder) const;

        friend bool operator==(const Font&, const Font&) = default;
    };

    /// The built-in themes, by their index.
    enum class City : std::uint8_t { stockholm, copenhagen, oslo, helsinki };

    /// The name of the theme, alike in all languages.
    static std::string_view displayName(City city);

    /// @{
    /// By the class of syntax, or the part of the editing surface, that it is for: `Color::Kind`.
    Color command;
    Color comment;
    Color instruction;
    Color keyword;
    Color api;
    Color variable;
    Color string;
    Color attribute;
    Color text;
    Color invisible;
    Color background;
    Color highlightLine;
    Color lineNumberText;
    Color lineNumberBackground;
    /// @}

    /// @{
    /// By what it is for: `Font::Kind`.
    Font lineNumberFont;
    Font textFont;
    /// @}

    /// @{
    /// The field of the kind.
    Color& color(Color::Kind kind);
    const Color& color(Color::Kind kind) const;
    /// @}

    /// The font itself, from its string.
    Platform::Font font(Font::Kind kind) const;

    static Theme decode(const Decoder& decoder);
    void encode(Encoder& encoder) const;

    friend bool operator==(const Theme&, const Theme&) = default;
};

/// @{
/// What a list of colours or fonts shows for each, in the user's language. A class of syntax is
/// shown as a sample of itself.
std::string label(Theme::Color::Kind kind);
std::string label(Theme::Font::Kind kind);
/// @}

} // namespace CorbelKit
