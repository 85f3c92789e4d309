#include "Tests/Support/MainLoop.h"

#import <CoreFoundation/CoreFoundation.h>

namespace TestSupport {

void drainMainLoop() {
    CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0, false);
}

} // namespace TestSupport
