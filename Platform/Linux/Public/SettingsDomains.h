#pragma once

#include "Platform/Expected.h"
#include "Platform/PropertyList.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The user's settings domains as a whole, for programs that show and edit what others keep there.
/// A program's own settings are `UserDefaults`. Callable on any thread.
namespace Platform::SettingsDomains {

/// Those that have a file, by name; whether it can be read is not known yet. Empty where there is
/// no folder of them.
std::vector<std::string> list();

/// What is stored in the domain; absent where there is no such domain. Gives the reason where its
/// file cannot be read, or holds something else than settings.
Expected<std::optional<PropertyList::Dictionary>> read(std::string_view domain);

/// Reads, changes and stores while no other program does. When the call returns the changes are
/// stored; or else it gives the reason, its own or what the edit gave, and nothing has changed.
std::optional<Error>
change(std::string_view domain,
       const std::function<std::optional<Error>(PropertyList::Dictionary&)>& edit);

/// Whether there was such a domain; its file is gone now. Gives the reason where it cannot be.
Expected<bool> remove(std::string_view domain);

} // namespace Platform::SettingsDomains
