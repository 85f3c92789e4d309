#include "CorbelKitInterface/Controls.h"

#include "CorbelKitInterface/macOS/FoundationValues.h"
#include "CorbelKitInterface/macOS/NativeView.h"

#import <Symbols/Symbols.h>

namespace CorbelKit {
namespace {

// The kinds of views are those that the storyboard's scene has checked.
template <class Kind>
Kind* as(const NativeView& native) {
    return static_cast<Kind*>(native.view);
}

__attribute__((availability(macos, introduced = 14.0))) NSSymbolEffectOptions*
effectOptions(const EffectRepeat& repeat) {
    if (repeat.count != 0)
        return [NSSymbolEffectOptions optionsWithRepeatCount:repeat.count];
    if (@available(macOS 15.0, *)) {
        return [NSSymbolEffectOptions
            optionsWithRepeatBehavior:[NSSymbolEffectOptionsRepeatBehavior
                                          behaviorPeriodicWithDelay:repeat.pause.count()]];
    }
    return [NSSymbolEffectOptions options];
}

} // namespace

bool EffectRepeat::isEndlessAvailable() {
    if (@available(macOS 15.0, *))
        return true;
    return false;
}

void TextField::setStringValue(const std::string& text) const {
    @autoreleasepool {
        as<NSTextField>(native()).stringValue = foundationText(text);
    }
}

void Button::setTitle(const std::string& title) const {
    @autoreleasepool {
        as<NSButton>(native()).title = foundationText(title);
    }
}

void Button::setHidden(bool isHidden) const {
    native().view.hidden = isHidden;
}

void Button::takeFocus() const {
    @autoreleasepool {
        NSView* const view = native().view;
        [view.window makeFirstResponder:view.canBecomeKeyView ? view : nil];
    }
}

bool ImageView::showApplicationIcon(const Platform::URL& application,
                                    const std::string& accessibilityDescription) const {
    @autoreleasepool {
        NSString* const path = foundationURL(application).path;
        if (path == nil)
            return false;
        as<NSImageView>(native()).image = [NSWorkspace.sharedWorkspace iconForFile:path];
        native().view.accessibilityLabel = foundationText(accessibilityDescription);
        return true;
    }
}

void ImageView::showSymbol(const std::string& name,
                           const std::string& accessibilityDescription) const {
    @autoreleasepool {
        NSString* const description =
            accessibilityDescription.empty() ? nil : foundationText(accessibilityDescription);
        as<NSImageView>(native()).image = [NSImage imageWithSystemSymbolName:foundationText(name)
                                                    accessibilityDescription:description];
    }
}

void ImageView::addBounceUpByLayer(const EffectRepeat& repeat) const {
    @autoreleasepool {
        if (@available(macOS 14.0, *)) {
            NSSymbolEffect* const bounce =
                [[NSSymbolBounceEffect bounceUpEffect] effectWithByLayer];
            [as<NSImageView>(native()) addSymbolEffect:bounce options:effectOptions(repeat)];
        }
    }
}

void ImageView::setAccessibilityRole(AccessibilityRole role) const {
    @autoreleasepool {
        switch (role) {
        case AccessibilityRole::image:
            native().view.accessibilityRole = NSAccessibilityImageRole;
            break;
        }
    }
}

} // namespace CorbelKit
