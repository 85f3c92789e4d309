#include "Platform/AppService.h"

#include "Platform/Linux/Desktop/SettingsEntries.h"
#include "Platform/Workspace.h"

namespace Platform {

void AppService::openSystemSettingsLoginItems() {
    if (const auto path = SettingsEntries::loginItems())
        Workspace::open(URL::file(*path));
}

} // namespace Platform
