#include "Platform/SystemObservers.h"

#include "Platform/macOS/Text.h"

namespace Platform {

void postToSystemObservers(std::string_view name) {
    @autoreleasepool {
        if (NSString* const text = foundationText(name))
            [NSNotificationCenter.defaultCenter postNotificationName:text object:nil];
    }
}

} // namespace Platform
