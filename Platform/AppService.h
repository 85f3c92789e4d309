#pragma once

/// Programs that the system starts for the user: login items, agents, daemons.
namespace Platform::AppService {

/// Whether the system has settings to open in which the user allows such programs. Any thread.
bool hasSystemSettingsLoginItems();

/// Opens the settings in which the user allows such programs, as the desktop has them: those of
/// what starts at login, or else all; nothing where it has none. Returns at once; whether it came
/// to anything is not reported. Needs the application's main loop. Any thread.
void openSystemSettingsLoginItems();

} // namespace Platform::AppService
