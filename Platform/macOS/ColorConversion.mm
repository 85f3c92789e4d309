#include "Platform/Native/ColorConversion.h"

#import <AppKit/AppKit.h>

#include <algorithm>

namespace Platform {
namespace {

NSColorSpace* systemSpace(Color::Space space) {
    switch (space) {
    case Color::Space::deviceRGB:
        return NSColorSpace.deviceRGBColorSpace;
    case Color::Space::genericRGB:
        return NSColorSpace.genericRGBColorSpace;
    case Color::Space::sRGB:
        return NSColorSpace.sRGBColorSpace;
    case Color::Space::deviceGray:
        return NSColorSpace.deviceGrayColorSpace;
    case Color::Space::genericGray:
        return NSColorSpace.genericGrayColorSpace;
    case Color::Space::deviceCMYK:
        return NSColorSpace.deviceCMYKColorSpace;
    case Color::Space::pattern:
        break;
    }
    return nil;
}

using ComponentsAndAlpha = std::array<CGFloat, std::tuple_size_v<Color::Components> + 1>;

} // namespace

std::optional<Color::Components> convertComponents(const Color::Components& components,
                                                   Color::Space from, Color::Space to) {
    @autoreleasepool {
        NSColorSpace* const source = systemSpace(from);
        NSColorSpace* const target = systemSpace(to);
        if (source == nil || target == nil)
            return std::nullopt;
        const NSInteger count = source.numberOfColorComponents;
        ComponentsAndAlpha values{};
        std::ranges::copy(components, values.begin());
        values[static_cast<std::size_t>(count)] = 1;
        NSColor* const color = [NSColor colorWithColorSpace:source
                                                 components:values.data()
                                                      count:count + 1];
        NSColor* const converted = [color colorUsingColorSpace:target];
        if (converted == nil)
            return std::nullopt;
        [converted getComponents:values.data()];
        Color::Components result{};
        std::copy_n(values.begin(), target.numberOfColorComponents, result.begin());
        return result;
    }
}

} // namespace Platform
