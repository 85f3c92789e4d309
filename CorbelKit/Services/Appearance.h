#pragma once

#include "Platform/Appearance.h"

namespace CorbelKit {

/// Whether the appearance, of the application or of a window or view, is the dark one rather than
/// the light one; false for one that resembles neither.
inline bool isDark(const Platform::Appearance& appearance) {
    using Name = Platform::Appearance::Name;
    return appearance.bestMatch({Name::darkAqua, Name::aqua}) == Name::darkAqua;
}

} // namespace CorbelKit
