// Declarations of what this system uses of the framework, and of nothing else. Compared with the
// public metadata by the declaration checker; a build on a Mac uses the system's own headers.
#pragma once

#include <Foundation/Foundation.h>

@interface SMAppService : NSObject
+ (void)openSystemSettingsLoginItems;
@end
