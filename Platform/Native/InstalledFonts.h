#pragma once

#include <optional>
#include <string>

/// The system's side of `Font`. All give the PostScript name of a font, and nothing when there is
/// none; callable on any thread.
namespace Platform::InstalledFonts {

/// `name` is well-formed UTF-8 without NUL.
std::optional<std::string> named(const std::string& name);
std::optional<std::string> userFixedPitch();
std::optional<std::string> system(double pointSize);

} // namespace Platform::InstalledFonts
