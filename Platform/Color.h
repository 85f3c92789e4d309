#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace Platform {

/// A colour, as it was given: its components are not kept within 0 to 1. A plain value.
class Color {
public:
    /// What the components are of.
    enum class Space : std::uint8_t {
        deviceRGB,   ///< the display's own
        genericRGB,  ///< "Generic RGB" of Apple's ColorSync
        sRGB,        ///< IEC 61966-2-1
        deviceGray,  ///< the display's own
        genericGray, ///< "Generic Gray" of Apple's ColorSync
        deviceCMYK,
        pattern, ///< drawn with an image, and so without components
    };

    /// In the order of the space's name, red first; those beyond the space's number are 0.
    using Components = std::array<double, 4>;

    /// @{
    /// A colour of the space, opaque unless given otherwise. Callable on any thread.
    static Color deviceRGB(double red, double green, double blue, double alpha = 1);
    static Color genericRGB(double red, double green, double blue, double alpha = 1);
    static Color sRGB(double red, double green, double blue, double alpha = 1);
    static Color deviceGray(double white, double alpha = 1);
    static Color genericGray(double white, double alpha = 1);
    static Color deviceCMYK(double cyan, double magenta, double yellow, double black,
                            double alpha = 1);
    static Color pattern(double alpha = 1);
    /// @}

    /// What texts are written in by the present appearance, in sRGB. Callable on any thread; like
    /// `Application::effectiveAppearance`, it may wait.
    static Color label();

    /// What the components are of.
    Space space() const { return space_; }

    /// Without alpha.
    const Components& components() const { return components_; }

    /// From 0, which cannot be seen, to 1, opaque; kept as it was given.
    double alpha() const { return alpha_; }

    /// The same colour in another space. Alpha is kept as it is, and so are components that are
    /// already in that space; a component that is not finite leaves none of the others a number.
    /// Absent for what the system cannot convert: from and to a pattern, always. Any thread.
    std::optional<Color> converted(Space space) const;

    bool operator==(const Color&) const = default;

private:
    Color(Space space, Components components, double alpha);

    Space space_;
    Components components_;
    double alpha_;
};

} // namespace Platform
