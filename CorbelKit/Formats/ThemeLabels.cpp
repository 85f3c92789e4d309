#include "CorbelKit/Formats/Theme.h"
#include "CorbelKit/Services/Const.h"
#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/TextServices.h"
#include "Platform/UTF8.h"

namespace CorbelKit {
namespace {

/// The text in the user's language, with a capital at the beginning and nowhere else.
std::string inSentenceCase(std::string_view key) {
    auto text = localizedString(key);
    if (text.empty())
        return text;
    const auto first = Platform::UTF8::decodeFirst(text).length;
    return Platform::TextServices::capitalized(text.substr(0, first)) +
           Platform::TextServices::lowercased(text.substr(first));
}

std::string partOf(std::string_view key, std::string_view part) {
    return inSentenceCase(key)
        .append(Const::Miscellaneous::separator)
        .append(localizedString(part));
}

std::string symbols() {
    namespace Symbol = Const::InvisibleSymbol;
    return std::string("(")
        .append(Symbol::middleDot)
        .append("  ")
        .append(Symbol::notSign)
        .append("  ")
        .append(Symbol::pilcrow)
        .append(")");
}

} // namespace

std::string label(Theme::Color::Kind kind) {
    using enum Theme::Color::Kind;
    switch (kind) {
    case text:
        return localizedString("Text");
    case background:
        return localizedString("Background");
    case lineNumberText:
        return partOf("Line Numbers", "Text");
    case lineNumberBackground:
        return partOf("Line Numbers", "Background");
    case invisible:
        return inSentenceCase("Invisible Characters") + " " + symbols();
    case highlightLine:
        return partOf("Highlight Current Line", "Background");
    case string:
        return "\"" + localizedString("String") + "\"";
    case command:
        return "<" + localizedString("Command") + ">";
    case comment:
        return "//" + localizedString("Comment");
    case variable:
        return "$" + localizedString("Variable");
    case keyword:
        return localizedString("Keyword");
    case api:
        return localizedString("API");
    case instruction:
        return "[" + localizedString("Instruction") + "]";
    case attribute:
        return localizedString("Attribute") + "=";
    }
    return {};
}

std::string label(Theme::Font::Kind kind) {
    return kind == Theme::Font::Kind::textFont ? localizedString("Text")
                                               : inSentenceCase("Line Numbers");
}

} // namespace CorbelKit
