#pragma once

#include <string_view>

// What the maker alone knows, for the maker to fill in: the name on the certificate that signs the
// code, and where the maker is reached. Until then it stands under a domain that nobody can own
// (RFC 2606).

/// A literal, since it stands within another one.
#define CORBEL_CERTIFICATE_HOLDER "Tarnwell Example"

/// Where the maker is reached.
namespace CorbelKit::Maker {

inline constexpr std::string_view site = "https://tarnwell.example/";
inline constexpr std::string_view helpPages = "https://tarnwell.example/help/";
inline constexpr std::string_view termsPage = "https://store.tarnwell.example/terms";
inline constexpr std::string_view supportAddress = "support@tarnwell.example";

} // namespace CorbelKit::Maker
