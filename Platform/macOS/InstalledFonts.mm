#include "Platform/Native/InstalledFonts.h"

#include "Platform/macOS/Text.h"

#import <AppKit/AppKit.h>

namespace Platform::InstalledFonts {
namespace {

constexpr CGFloat anySize = 12;

std::optional<std::string> nameOf(NSFont* font) {
    if (font == nil)
        return std::nullopt;
    return portableText(font.fontName);
}

} // namespace

std::optional<std::string> named(const std::string& name) {
    @autoreleasepool {
        return nameOf([NSFont fontWithName:foundationText(name) size:anySize]);
    }
}

std::optional<std::string> userFixedPitch() {
    @autoreleasepool {
        return nameOf([NSFont userFixedPitchFontOfSize:anySize]);
    }
}

std::optional<std::string> system(double pointSize) {
    @autoreleasepool {
        return nameOf([NSFont systemFontOfSize:pointSize]);
    }
}

} // namespace Platform::InstalledFonts
