#pragma once

#include <string_view>

/// The fixed names that the maker's applications share, each in one place.
namespace CorbelKit::Const {

namespace Key {
inline constexpr std::string_view label = "Label";
} // namespace Key

namespace PathComponent {
inline constexpr std::string_view launchAgents = "LaunchAgents";
inline constexpr std::string_view launchDaemons = "LaunchDaemons";
inline constexpr std::string_view library = "Library";
inline constexpr std::string_view privilegedHelperTools = "PrivilegedHelperTools";
inline constexpr std::string_view startupItems = "StartupItems";
} // namespace PathComponent

namespace Miscellaneous {
/// The maker's reverse-DNS prefix.
inline constexpr std::string_view identifierPrefix = "com.tarnwell.";
} // namespace Miscellaneous

namespace App {
namespace Name {
inline constexpr std::string_view vesperPro = "Vesper Pro";
} // namespace Name

namespace Identifier {
inline constexpr std::string_view vesperPro = "com.tarnwell.VesperPro10";
/// The agent of an older generation.
inline constexpr std::string_view vesperX4Agent = "com.tarnwell.VesperX4Agent";
} // namespace Identifier

namespace URL {
/// The scheme of the main application's job links; Base64 of the job file's path follows "://".
inline constexpr std::string_view jobLinkScheme = "vesperpro10joburl";
} // namespace URL
} // namespace App

namespace FileName {
inline constexpr std::string_view dsStore = ".DS_Store";
} // namespace FileName

namespace Command {
inline constexpr std::string_view bash = "/bin/bash";
inline constexpr std::string_view launchctl = "/bin/launchctl";
inline constexpr std::string_view sh = "/bin/sh";
inline constexpr std::string_view zsh = "/bin/zsh";
} // namespace Command

namespace NotificationAction {
inline constexpr std::string_view show = "ShowAction";
} // namespace NotificationAction

namespace NotificationCategory {
inline constexpr std::string_view vesperAgent = "VesperAgent";
} // namespace NotificationCategory

} // namespace CorbelKit::Const
