#pragma once

#include "Platform/Color.h"

namespace Platform {

/// The system's side of `Color::converted`: between two different spaces, neither of them a
/// pattern, and of finite components. Absent when the system refuses. Callable on any thread.
std::optional<Color::Components> convertComponents(const Color::Components& components,
                                                   Color::Space from, Color::Space to);

} // namespace Platform
