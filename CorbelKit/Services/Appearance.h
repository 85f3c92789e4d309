#pragma once

#include "Platform/Application.h"

#include <concepts>

namespace CorbelKit {

/// Has an appearance: a window, a view, the application.
template <class Object>
concept HasEffectiveAppearance = requires(const Object& object) {
    { object.effectiveAppearance() } -> std::convertible_to<Platform::Appearance>;
};

/// Whether the appearance is the dark one rather than the light one; false for one that resembles
/// neither.
inline bool isDark(const Platform::Appearance& appearance) {
    using Name = Platform::Appearance::Name;
    return appearance.bestMatch({Name::darkAqua, Name::aqua}) == Name::darkAqua;
}

/// The same of the appearance of an object.
template <HasEffectiveAppearance Object>
bool isDark(const Object& object) {
    return isDark(object.effectiveAppearance());
}

/// The application as an object that has an appearance.
struct ApplicationAppearance {
    /// Threads and waits as of `Platform::Application::effectiveAppearance`.
    static Platform::Appearance effectiveAppearance() {
        return Platform::Application::effectiveAppearance();
    }
};

} // namespace CorbelKit
