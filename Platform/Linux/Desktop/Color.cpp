#include "Platform/Color.h"

#include "Platform/Application.h"

namespace Platform {

// Desktops name no such colour; this is how their themes and those of macOS have it.
Color Color::label() {
    constexpr double opacity = 0.85;
    using Name = Appearance::Name;
    const bool isDark = Application::effectiveAppearance().bestMatch(
                            {Name::aqua, Name::darkAqua}) == Name::darkAqua;
    const double white = isDark ? 1 : 0;
    return sRGB(white, white, white, opacity);
}

} // namespace Platform
