#pragma once

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

/// Keys of property lists and records.
namespace CorbelKit::Const::Key {
inline constexpr std::string_view build = "build";
inline constexpr std::string_view bundleProgram = "BundleProgram";
inline constexpr std::string_view children = "children";
inline constexpr std::string_view data = "data";
inline constexpr std::string_view extensions = "extensions";
inline constexpr std::string_view fileExtendedAttributes = "NSFileExtendedAttributes";
inline constexpr std::string_view identifiers = "identifiers";
inline constexpr std::string_view inlined = "inline";
inline constexpr std::string_view item = "item";
inline constexpr std::string_view kind = "kind";
inline constexpr std::string_view label = "Label";
inline constexpr std::string_view name = "name";
inline constexpr std::string_view root = "root";
inline constexpr std::string_view shell = "shell";
inline constexpr std::string_view signature = "signature";
inline constexpr std::string_view suppressResult = "suppressResult";
inline constexpr std::string_view text = "text";
inline constexpr std::string_view uuid = "uuid";
inline constexpr std::string_view value = "value";
inline constexpr std::string_view version = "version";

/// Names of extended attributes of files.
namespace ExtendedAttributes {
inline constexpr std::string_view finderComment = "com.apple.metadata:kMDItemFinderComment";
inline constexpr std::string_view userTags = "com.apple.metadata:_kMDItemUserTags";
} // namespace ExtendedAttributes
} // namespace CorbelKit::Const::Key

// clang-format on
