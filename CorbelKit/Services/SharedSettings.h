#pragma once

#include "Platform/UserDefaults.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The settings that the main application shares with its agent. Callable on any thread.
namespace CorbelKit::SharedSettings {

/// Absent where no settings can be kept.
std::optional<Platform::UserDefaults> suite();

/// The list under the key, as it is now; empty where there is none, or anything but a list of
/// texts.
std::vector<std::string> readStringArray(std::string_view key);

/// Labels of jobs of whose changes the user is not notified.
std::vector<std::string> readExceptions();
/// How the labels begin of further such jobs.
std::vector<std::string> readExcludePrefixes();

} // namespace CorbelKit::SharedSettings

namespace CorbelKit {

/// Turns a switch in the application's own settings. One that was never set counts as off. Gives
/// the reason where it stays as it was.
std::optional<Platform::Error> toggleSetting(std::string_view key);

} // namespace CorbelKit
