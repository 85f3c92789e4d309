#include "CorbelKit/Coding/Coding.h"
#include "CorbelKit/Formats/Theme.h"

namespace CorbelKit {
namespace {

using Space = Platform::Color::Space;

namespace Key {
constexpr std::string_view red = "red";
constexpr std::string_view green = "green";
constexpr std::string_view blue = "blue";
constexpr std::string_view alpha = "alpha";
} // namespace Key

Platform::Color inSomeRGB(const Platform::Color& color) {
    for (const auto space : {Space::deviceRGB, Space::genericRGB, Space::sRGB}) {
        if (auto converted = color.converted(space))
            return *converted;
    }
    return Platform::Color::label();
}

} // namespace

Theme::Color Theme::Color::of(const Platform::Color& color) {
    const auto rgb = inSomeRGB(color);
    const auto& [red, green, blue, none] = rgb.components();
    return {.red = red, .green = green, .blue = blue, .alpha = rgb.alpha()};
}

Platform::Color Theme::Color::platformColor() const {
    return Platform::Color::deviceRGB(red, green, blue, alpha);
}

Theme::Color Theme::Color::decode(const Decoder& decoder) {
    const auto container = decoder.container();
    return {.red = container.decode<double>(Key::red),
            .green = container.decode<double>(Key::green),
            .blue = container.decode<double>(Key::blue),
            .alpha = container.decode<double>(Key::alpha)};
}

void Theme::Color::encode(Encoder& encoder) const {
    auto container = encoder.container();
    container.encode(Key::red, red);
    container.encode(Key::green, green);
    container.encode(Key::blue, blue);
    container.encode(Key::alpha, alpha);
}

} // namespace CorbelKit
