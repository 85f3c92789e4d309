#pragma once

#include "CorbelKitInterface/Controls.h"
#include "CorbelKitInterface/Storyboard.h"

#include <functional>
#include <optional>

namespace CorbelKit {

/// What the window of `AllowBackgroundItem` shows, and what its buttons do. Each outlet is absent
/// until the storyboard has connected something to it; what is absent is left out. Main thread.
class AllowBackgroundItemViewController {
public:
    /// `closeWindow` closes the window that the view is in.
    explicit AllowBackgroundItemViewController(std::function<void()> closeWindow);

    std::optional<TextField> titleTextField;    ///< what is about to happen
    std::optional<TextField> subtitleTextField; ///< what to do about it
    std::optional<Button> okButton;             ///< closes the window
    std::optional<Button> systemSettingsButton; ///< opens the settings of login items
    std::optional<ImageView> clickImageView;    ///< the pointer at the switch
    std::optional<ImageView> iconImageView;     ///< the system's settings application
    std::optional<Box> illustrationBox;         ///< the frame around both

    /// Takes outlets and actions from the scene, whose tasks refer to this object.
    void connect(WindowScene& scene);

    /// Fills the outlets, once they are connected.
    void viewDidLoad();

    /// At each showing of the window: the keyboard is the OK button's.
    void viewDidAppear();

    /// Closes the window.
    void okAction();
    /// Closes the window first: the settings are not to open behind it.
    void systemSettingsAction();
    /// Opens the page on background items of the application's online help.
    void help();

private:
    void showIllustration() const;
    void showSettings() const;

    std::function<void()> closeWindow_;
};

} // namespace CorbelKit
