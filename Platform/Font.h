#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// A font of this machine at a size, by its name. A plain value; callable on any thread.
struct Font {
    std::string postScriptName; ///< as the font file has it ("Menlo-Regular")
    double pointSize = 0;       ///< in points (1/72 inch), more than 0

    /// The installed font of that PostScript name, or else the regular face of the family of that
    /// name. Absent when there is neither, and for a size that is not finite or not more than 0.
    static std::optional<Font> named(std::string_view name, double pointSize);

    /// The user's own choice of a font whose characters all have the same width. Absent when no
    /// such font is installed, and for a size as above. The first call may take a quarter of a
    /// second.
    static std::optional<Font> userFixedPitch(double pointSize);

    /// The font of the user interface. A size as above stands for the system's own. Its name is
    /// empty where no font at all is installed.
    static Font system(double pointSize);

    bool operator==(const Font&) const = default;
};

} // namespace Platform
