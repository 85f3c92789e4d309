#pragma once

#include "CorbelKit/Services/Maker.h"

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

/// What the signature of the maker's own code looks like.
namespace CorbelKit::Const::Codesign {
inline constexpr std::string_view tool = "/usr/bin/codesign";
/// The authority chain as the tool prints it, a line each.
inline constexpr std::string_view authorities = "Authority=Developer ID Application: " CORBEL_CERTIFICATE_HOLDER " (QX42K7M3ZP)\nAuthority=Developer ID Certification Authority\nAuthority=Apple Root CA\n";
/// Signed by Apple, for the App Store, or with a Developer ID.
inline constexpr std::string_view requirement = "(anchor apple) or (anchor apple generic and certificate leaf[field.1.2.840.113635.100.6.1.9] exists) or (anchor apple generic and certificate 1[field.1.2.840.113635.100.6.2.6] exists and certificate leaf[field.1.2.840.113635.100.6.1.13] exists)";
} // namespace CorbelKit::Const::Codesign

// clang-format on
