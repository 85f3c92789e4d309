#pragma once

#include "CorbelKitInterface/AllowBackgroundItemViewController.h"
#include "CorbelKitInterface/Storyboard.h"

#include <memory>

namespace CorbelKit {

/// The window of `AllowBackgroundItem`, whose delegate it is. The window disappears as soon as the
/// user turns elsewhere, as to the system's own question. Main thread.
class AllowBackgroundItemWindowController
    : public WindowDelegate,
      public std::enable_shared_from_this<AllowBackgroundItemWindowController> {
public:
    /// By which the storyboard names it.
    static constexpr auto className = "AllowBackgroundItemWindowController";

    /// Takes the scene over and fills it. The window goes with the controller.
    static std::shared_ptr<AllowBackgroundItemWindowController> make(WindowScene scene);

    /// Shows the window in front of the others.
    void showWindow();
    /// Takes it off the screen, for the next time.
    void close();

    void windowDidResignKey() override;

private:
    explicit AllowBackgroundItemWindowController(WindowScene scene);

    void windowDidLoad();

    WindowScene scene_;
    AllowBackgroundItemViewController viewController_;
};

} // namespace CorbelKit
