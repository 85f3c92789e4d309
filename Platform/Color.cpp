#include "Platform/Color.h"

#include "Platform/Native/ColorConversion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace Platform {
namespace {

std::size_t numberOfComponents(Color::Space space) {
    switch (space) {
    case Color::Space::deviceRGB:
    case Color::Space::genericRGB:
    case Color::Space::sRGB:
        return 3;
    case Color::Space::deviceGray:
    case Color::Space::genericGray:
        return 1;
    case Color::Space::deviceCMYK:
        return 4;
    case Color::Space::pattern:
        break;
    }
    return 0;
}

Color::Components noNumbers(Color::Space space) {
    Color::Components components{};
    std::fill_n(components.begin(), numberOfComponents(space),
                std::numeric_limits<double>::quiet_NaN());
    return components;
}

} // namespace

Color::Color(Space space, Components components, double alpha)
    : space_(space)
    , components_(components)
    , alpha_(alpha) {}

Color Color::deviceRGB(double red, double green, double blue, double alpha) {
    return {Space::deviceRGB, {red, green, blue}, alpha};
}

Color Color::genericRGB(double red, double green, double blue, double alpha) {
    return {Space::genericRGB, {red, green, blue}, alpha};
}

Color Color::sRGB(double red, double green, double blue, double alpha) {
    return {Space::sRGB, {red, green, blue}, alpha};
}

Color Color::deviceGray(double white, double alpha) {
    return {Space::deviceGray, {white}, alpha};
}

Color Color::genericGray(double white, double alpha) {
    return {Space::genericGray, {white}, alpha};
}

Color Color::deviceCMYK(double cyan, double magenta, double yellow, double black, double alpha) {
    return {Space::deviceCMYK, {cyan, magenta, yellow, black}, alpha};
}

Color Color::pattern(double alpha) {
    return {Space::pattern, {}, alpha};
}

std::optional<Color> Color::converted(Space space) const {
    if (space_ == Space::pattern || space == Space::pattern)
        return std::nullopt;
    if (space_ == space)
        return *this;
    if (!std::ranges::all_of(components_, [](double value) { return std::isfinite(value); }))
        return Color(space, noNumbers(space), alpha_);
    const auto components = convertComponents(components_, space_, space);
    if (!components)
        return std::nullopt;
    return Color(space, *components, alpha_);
}

} // namespace Platform
