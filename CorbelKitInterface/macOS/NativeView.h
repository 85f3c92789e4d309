#pragma once

#import <AppKit/AppKit.h>

namespace CorbelKit {

/// A view of a storyboard.
struct NativeView {
    NSView* view;
};

} // namespace CorbelKit
