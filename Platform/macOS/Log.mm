#include "Platform/Log.h"

#include "Platform/macOS/Text.h"

namespace Platform {

void log(std::string_view message) {
    @autoreleasepool {
        NSLog(@"%@", foundationText(message));
    }
}

} // namespace Platform
