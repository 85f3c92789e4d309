#include "CorbelKit/Formats/Theme.h"

#include "CorbelKit/Coding/Coding.h"

#include <tuple>

namespace CorbelKit {
namespace {

/// The fields and their keys, in the order of both.
constexpr std::tuple fields{
    std::pair("command", &Theme::command),
    std::pair("comment", &Theme::comment),
    std::pair("instruction", &Theme::instruction),
    std::pair("keyword", &Theme::keyword),
    std::pair("api", &Theme::api),
    std::pair("variable", &Theme::variable),
    std::pair("string", &Theme::string),
    std::pair("attribute", &Theme::attribute),
    std::pair("text", &Theme::text),
    std::pair("invisible", &Theme::invisible),
    std::pair("background", &Theme::background),
    std::pair("highlightLine", &Theme::highlightLine),
    std::pair("lineNumberText", &Theme::lineNumberText),
    std::pair("lineNumberBackground", &Theme::lineNumberBackground),
    std::pair("lineNumberFont", &Theme::lineNumberFont),
    std::pair("textFont", &Theme::textFont),
};

void forEachField(const auto& visit) {
    std::apply([&](const auto&... field) { (visit(field.first, field.second), ...); }, fields);
}

/// In the order of the kinds.
constexpr std::array colors{
    &Theme::text,           &Theme::background,
    &Theme::lineNumberText, &Theme::lineNumberBackground,
    &Theme::invisible,      &Theme::highlightLine,
    &Theme::string,         &Theme::command,
    &Theme::comment,        &Theme::variable,
    &Theme::keyword,        &Theme::api,
    &Theme::instruction,    &Theme::attribute,
};

} // namespace

std::string_view Theme::displayName(City city) {
    constexpr std::array<std::string_view, 4> names{"Stockholm", "København", "Oslo", "Helsinki"};
    return names.at(static_cast<std::size_t>(city));
}

Theme::Color& Theme::color(Color::Kind kind) {
    return this->*colors.at(static_cast<std::size_t>(kind));
}

const Theme::Color& Theme::color(Color::Kind kind) const {
    return this->*colors.at(static_cast<std::size_t>(kind));
}

Platform::Font Theme::font(Font::Kind kind) const {
    return (kind == Font::Kind::textFont ? textFont : lineNumberFont).platformFont();
}

Theme Theme::decode(const Decoder& decoder) {
    Theme theme;
    const auto container = decoder.container();
    forEachField([&]<class T>(const char* key, T Theme::* field) {
        theme.*field = container.decode<T>(key);
    });
    return theme;
}

void Theme::encode(Encoder& encoder) const {
    auto container = encoder.container();
    forEachField([&](const char* key, auto field) { container.encode(key, this->*field); });
}

} // namespace CorbelKit
