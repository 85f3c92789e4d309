#include "CorbelKitInterface/Storyboard.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "CorbelKitInterface/macOS/FoundationValues.h"
#include "CorbelKitInterface/macOS/NativeView.h"
#include "CorbelKitInterface/macOS/StoryboardControllers.h"

#include <utility>

namespace CorbelKit {
namespace {

Class classOf(ViewKind kind) {
    switch (kind) {
    case ViewKind::textField:
        return NSTextField.class;
    case ViewKind::button:
        return NSButton.class;
    case ViewKind::imageView:
        return NSImageView.class;
    case ViewKind::box:
        return NSBox.class;
    }
    return nil;
}

// AppKit raises an exception for a storyboard that is not there.
NSStoryboard* storyboardNamed(const std::string& name, const Platform::Bundle& bundle) {
    NSURL* const url = foundationURL(bundle.bundleURL());
    NSString* const text = foundationText(name);
    if (url == nil || text == nil || !requiredResource(bundle, name + ".storyboardc"))
        return nil;
    return [NSStoryboard storyboardWithName:text bundle:[NSBundle bundleWithURL:url]];
}

NSString* programName() {
    NSString* const name = NSRunningApplication.currentApplication.localizedName;
    return name == nil ? @"" : name;
}

} // namespace

class WindowScene::Impl {
public:
    explicit Impl(StoryboardWindowController* controller)
        : controller_(controller) {
        static_cast<void>(viewController().view); // which connects the outlets
        if (controller_.window.title.length == 0) // which the list of windows shows
            controller_.window.title = programName();
    }

    ~Impl() {
        controller_.resignKeyHandler = nil;
        [viewController().actions removeAllObjects];
        [controller_ close];
    }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    StoryboardWindowController* controller() const { return controller_; }

    /// nil where the storyboard has another.
    StoryboardViewController* viewController() const {
        NSViewController* const content = controller_.contentViewController;
        return [content isKindOfClass:StoryboardViewController.class]
                   ? static_cast<StoryboardViewController*>(content)
                   : nil;
    }

private:
    StoryboardWindowController* const controller_;
};

void WindowScene::setDelegate(std::weak_ptr<WindowDelegate> delegate) {
    impl_->controller().resignKeyHandler = ^{
        if (const auto observer = delegate.lock())
            observer->windowDidResignKey();
    };
}

void WindowScene::showWindow() {
    @autoreleasepool {
        [NSApp activateIgnoringOtherApps:YES]; // a background application has no keyboard to give
        [impl_->controller() showWindow:nil];
    }
}

void WindowScene::close() {
    @autoreleasepool {
        [impl_->controller() close];
    }
}

std::shared_ptr<const NativeView> WindowScene::nativeOutlet(ViewKind kind,
                                                            std::string_view name) const {
    @autoreleasepool {
        NSString* const key = foundationText(name);
        StoryboardViewController* const controller = impl_->viewController();
        if (key == nil || ![controller respondsToSelector:NSSelectorFromString(key)])
            return nullptr;
        id const view = [controller valueForKey:key];
        if (![view isKindOfClass:classOf(kind)])
            return nullptr;
        return std::make_shared<NativeView>(NativeView{.view = view});
    }
}

void WindowScene::setAction(std::string_view selector, const std::function<void()>& task) {
    @autoreleasepool {
        const auto kept = task; // a block would keep the reference
        impl_->viewController().actions[foundationText(selector)] = ^{
            kept();
        };
    }
}

std::optional<WindowScene> Storyboard::instantiateInitialController(const std::string& name,
                                                                    const Platform::Bundle& bundle,
                                                                    const std::string& className) {
    @autoreleasepool {
        id const controller = [storyboardNamed(name, bundle) instantiateInitialController];
        const Class expected = NSClassFromString(foundationText(className));
        if (expected == nil || ![controller isKindOfClass:expected] ||
            ![controller isKindOfClass:StoryboardWindowController.class])
            return std::nullopt;
        return WindowScene(std::make_shared<WindowScene::Impl>(controller));
    }
}

} // namespace CorbelKit
