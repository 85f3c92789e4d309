#pragma once

#include <string>
#include <string_view>

// clang-format off: a table, one constant a line, in the order in which they are declared

namespace CorbelKit::Const {

/// The applications that work together.
namespace App {
/// Names of applications, as the user knows them.
namespace Name {
inline constexpr std::string_view vesper = "Vesper";
inline constexpr std::string_view vesperX = "Vesper X";
inline constexpr std::string_view vesperPro = "Vesper Pro";
inline constexpr std::string_view vesperProAgent = "Vesper Pro Agent";
inline constexpr std::string_view brindle = "Brindle";
inline constexpr std::string_view suffix = ".app";

/// The name of the system's settings application in the user's language, asked once, on first use;
/// "System Settings" where there is none. Any thread.
const std::string& systemSettings();
} // namespace Name

/// Bundle identifiers.
namespace Identifier {
inline constexpr std::string_view vesper = "com.tarnwell.Vesper10";
inline constexpr std::string_view vesperPro = "com.tarnwell.VesperPro10";
inline constexpr std::string_view brindle = "com.tarnwell.Brindle14";
/// The agent of an older generation, which the present one removes.
inline constexpr std::string_view vesperX4Agent = "com.tarnwell.VesperX4Agent";
inline constexpr std::string_view vesperProAgent = "com.tarnwell.VesperProAgent";
inline constexpr std::string_view scriptEditor = "com.apple.ScriptEditor2";
inline constexpr std::string_view shortcuts = "com.apple.shortcuts";
inline constexpr std::string_view systemSettings = "com.apple.systempreferences";
} // namespace Identifier

namespace URL {
/// The scheme of the main application's job links; Base64 of the job file's path follows "://".
inline constexpr std::string_view jobLinkScheme = "vesperpro10joburl";
} // namespace URL
} // namespace App

/// Keys of an earlier version of a job.
namespace Revision {
inline constexpr std::string_view date = "RevisionDate";
inline constexpr std::string_view plist = "RevisionPlist";
} // namespace Revision

/// Services within the main application.
namespace XPC::Name::Vesper {
/// The main application's action service, in its Contents/XPCServices.
inline constexpr std::string_view action = "Vesper Pro Action.xpc";
} // namespace XPC::Name::Vesper

/// Sizes of icons, in points.
namespace Dimension::Icon {
inline constexpr double edge = 16.0;
} // namespace Dimension::Icon

} // namespace CorbelKit::Const

// clang-format on
