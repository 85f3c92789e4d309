#include "Platform/AppService.h"

#include "Platform/Linux/Desktop/SettingsEntries.h"
#include "Platform/Workspace.h"

namespace Platform {
namespace {

std::optional<std::string> settings() {
    const auto loginItems = SettingsEntries::loginItems();
    return loginItems ? loginItems : SettingsEntries::application();
}

} // namespace

bool AppService::hasSystemSettingsLoginItems() {
    return settings().has_value();
}

void AppService::openSystemSettingsLoginItems() {
    if (const auto path = settings())
        Workspace::open(URL::file(*path));
}

} // namespace Platform
