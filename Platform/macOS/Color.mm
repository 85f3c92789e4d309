#include "Platform/Color.h"

#include "Platform/macOS/MainThreadCall.h"

#import <AppKit/AppKit.h>

namespace Platform {

// What the system's colour is depends on the appearance that is drawn in.
Color Color::label() {
    __block std::array<CGFloat, 4> components = {0, 0, 0, 1};
    callOnMainThread(^{
        @autoreleasepool {
            [NSApp.effectiveAppearance performAsCurrentDrawingAppearance:^{
                NSColor* const label =
                    [NSColor.labelColor colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
                [label getComponents:components.data()];
            }];
        }
    });
    return sRGB(components[0], components[1], components[2], components[3]);
}

} // namespace Platform
