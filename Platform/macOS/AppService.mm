#include "Platform/AppService.h"

#import <ServiceManagement/ServiceManagement.h>

namespace Platform {

bool AppService::hasSystemSettingsLoginItems() {
    return true; // part of the system, as is the call to open them
}

void AppService::openSystemSettingsLoginItems() {
    @autoreleasepool {
        [SMAppService openSystemSettingsLoginItems];
    }
}

} // namespace Platform
