#include "Platform/AppService.h"

#import <ServiceManagement/ServiceManagement.h>

namespace Platform {

void AppService::openSystemSettingsLoginItems() {
    @autoreleasepool {
        [SMAppService openSystemSettingsLoginItems];
    }
}

} // namespace Platform
