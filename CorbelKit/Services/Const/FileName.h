#pragma once

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

/// Names of files and folders of user data.
namespace CorbelKit::Const::FileName {
inline constexpr std::string_view dsStore = ".DS_Store";
inline constexpr std::string_view exceptions = "Exceptions.plist";
inline constexpr std::string_view icons = "Icons";
inline constexpr std::string_view identifiers = "Identifiers";
inline constexpr std::string_view notes = "Notes.plist";
inline constexpr std::string_view revisions = "Revisions.plist";
inline constexpr std::string_view smartFolders = "SmartFolders.plist";
inline constexpr std::string_view tags = "Tags.plist";
} // namespace CorbelKit::Const::FileName

// clang-format on
