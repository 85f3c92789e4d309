#pragma once

#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

namespace CorbelKit::Const {

/// Names of folders, and how bundles end.
namespace PathComponent {
inline constexpr std::string_view app = ".app";
inline constexpr std::string_view appFolder = ".app/";
inline constexpr std::string_view applications = "Applications";
inline constexpr std::string_view applicationSupport = "Application Support";
inline constexpr std::string_view automator = "Automator";
inline constexpr std::string_view caches = "Caches";
inline constexpr std::string_view contents = "Contents";
inline constexpr std::string_view documents = "Documents";
inline constexpr std::string_view helpers = "Helpers";
inline constexpr std::string_view launchAgents = "LaunchAgents";
inline constexpr std::string_view launchDaemons = "LaunchDaemons";
inline constexpr std::string_view launchServices = "LaunchServices";
inline constexpr std::string_view library = "Library";
inline constexpr std::string_view loginItems = "LoginItems";
inline constexpr std::string_view macOS = "MacOS";
inline constexpr std::string_view plugIns = "PlugIns";
inline constexpr std::string_view privilegedHelperTools = "PrivilegedHelperTools";
inline constexpr std::string_view quickLook = "QuickLook";
inline constexpr std::string_view resources = "Resources";
inline constexpr std::string_view spotlight = "Spotlight";
inline constexpr std::string_view startupItems = "StartupItems";
inline constexpr std::string_view system = "System";
inline constexpr std::string_view utilities = "Utilities";
inline constexpr std::string_view xpcServices = "XPCServices";
} // namespace PathComponent

/// Extensions of file names, without the period.
namespace PathExtension {
inline constexpr std::string_view plist = "plist";
} // namespace PathExtension

/// Components of paths on the maker's web site.
namespace SiteComponent {
inline constexpr std::string_view downloads = "downloads";
inline constexpr std::string_view updates = "updates";
} // namespace SiteComponent

} // namespace CorbelKit::Const

// clang-format on
