#pragma once

#include "CorbelKit/Services/Maker.h"

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

/// What has no list of its own.
namespace CorbelKit::Const::Miscellaneous {
inline constexpr std::string_view frame = "frame";
inline constexpr std::string_view separator = " — ";
inline constexpr std::string_view fontSizeSeparator = "@@@@";
/// The extended attribute that holds a file's text encoding.
inline constexpr std::string_view textEncodingAttribute = "com.apple.TextEncoding";
inline constexpr std::string_view teamIdentifier = "QX42K7M3ZP";
/// The maker's reverse-DNS prefix.
inline constexpr std::string_view identifierPrefix = "com.tarnwell.";
inline constexpr std::string_view privacy = "privacy";
inline constexpr std::string_view sessionLoginItems = "com.apple.LSSharedFileList.SessionLoginItems";
/// Finds all applications with Spotlight.
inline constexpr std::string_view applicationsQuery = "kMDItemContentType == 'com.apple.application-bundle'";
inline constexpr std::string_view site = Maker::site;
inline constexpr std::string_view termsPage = Maker::termsPage;
inline constexpr std::string_view supportAddress = Maker::supportAddress;
} // namespace CorbelKit::Const::Miscellaneous

// clang-format on
