#include "CorbelKit/Coding/Coding.h"
#include "CorbelKit/Formats/Theme.h"
#include "CorbelKit/Services/Const.h"

#include <iomanip>
#include <limits>
#include <locale>
#include <optional>
#include <sstream>

namespace CorbelKit {
namespace {

constexpr auto separator = Const::Miscellaneous::fontSizeSeparator;
constexpr std::string_view stringKey = "string";

/// The whole text as a number of the C locale.
std::optional<double> numberOf(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> std::noskipws >> number;
    if (stream.fail() || stream.peek() != std::istringstream::traits_type::eof())
        return std::nullopt;
    return number;
}

std::optional<Platform::Font> named(std::string_view string) {
    const auto nameEnd = string.find(separator);
    if (nameEnd == std::string_view::npos)
        return std::nullopt;
    auto size = string.substr(nameEnd + separator.size());
    size = size.substr(0, size.find(separator)); // what follows the size does not count
    const auto number = numberOf(std::string(size));
    return number ? Platform::Font::named(string.substr(0, nameEnd), *number) : std::nullopt;
}

} // namespace

Theme::Font Theme::Font::of(const Platform::Font& font) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << font.postScriptName << separator << std::fixed << std::setprecision(2)
           << font.pointSize;
    return {.string = stream.str()};
}

Platform::Font Theme::Font::platformFont() const {
    constexpr double usualSize = 12;
    if (auto font = named(string))
        return *font;
    if (auto font = Platform::Font::userFixedPitch(usualSize))
        return *font;
    return Platform::Font::named("Menlo", usualSize).value_or(Platform::Font::system(usualSize));
}

Theme::Font Theme::Font::decode(const Decoder& decoder) {
    return {.string = decoder.container().decode<std::string>(stringKey)};
}

void Theme::Font::encode(Encoder& encoder) const {
    encoder.container().encode(stringKey, string);
}

} // namespace CorbelKit
