#pragma once

#include "CorbelKitInterface/Controls.h"
#include "Platform/Bundle.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace CorbelKit {

/// Is notified of what the user does with a window. Called on the main thread.
class WindowDelegate {
public:
    virtual ~WindowDelegate() = default;

    /// The window no longer has the user's keyboard. It may be shown or closed within this call.
    virtual void windowDidResignKey() = 0;

protected:
    WindowDelegate() = default;
    WindowDelegate(const WindowDelegate&) = default;
    WindowDelegate& operator=(const WindowDelegate&) = default;
};

/// A window with its views, as a storyboard lays it out, and the controllers' place in it. A
/// handle: copies mean the same window, which lives as long as any of them, shown or not. Main
/// thread.
class WindowScene {
public:
    class Impl; ///< the system's own

    /// For storyboards, which make scenes.
    explicit WindowScene(std::shared_ptr<Impl> impl)
        : impl_(std::move(impl)) {}

    /// Who observes the window from now on; the delegate is not kept alive.
    void setDelegate(std::weak_ptr<WindowDelegate> delegate);

    /// Shows the window in front of the others and gives it the keyboard.
    void showWindow();

    /// Takes the window off the screen; it can be shown again.
    void close();

    /// What the layout has connected to the outlet of the name; absent where it is of another kind
    /// or nothing is connected.
    template <class Kind>
    std::optional<Kind> outlet(std::string_view name) const {
        auto view = nativeOutlet(Kind::kind, name);
        return view ? std::optional<Kind>(std::move(view)) : std::nullopt;
    }

    /// Has the task run when the user asks for the action, by the selector that the layout names.
    void setAction(std::string_view selector, const std::function<void()>& task);

private:
    std::shared_ptr<const NativeView> nativeOutlet(ViewKind kind, std::string_view name) const;

    std::shared_ptr<Impl> impl_;
};

/// The layout of windows, in files of the system's own kind among a bundle's resources (macOS: a
/// compiled storyboard; Linux: GtkBuilder's XML).
namespace Storyboard {

/// A new window as the storyboard of the name lays it out. Absent where the bundle has no such
/// storyboard or it cannot be read, where it does not begin with a window controller of the
/// class, and where the session has no windows.
std::optional<WindowScene> instantiateInitialController(const std::string& name,
                                                        const Platform::Bundle& bundle,
                                                        const std::string& className);

} // namespace Storyboard
} // namespace CorbelKit
