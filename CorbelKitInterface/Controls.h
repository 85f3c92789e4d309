#pragma once

#include "CorbelKitInterface/SymbolEffect.h"
#include "Platform/URL.h"

#include <cstdint>
#include <memory>
#include <string>

/// What the kit's windows are made of. Handles: copies mean the same view, which stays alive with
/// them. Main thread.
namespace CorbelKit {

/// The system's own view.
struct NativeView;

/// What a storyboard can connect an outlet to.
enum class ViewKind : std::uint8_t { textField, button, imageView, box };

/// Any view. Nothing here fails: what a view cannot show it leaves out.
class View {
public:
    /// For storyboards, which make views. The view is not null.
    explicit View(std::shared_ptr<const NativeView> native);

protected:
    /// Lives as long as this handle.
    const NativeView& native() const;

private:
    std::shared_ptr<const NativeView> native_;
};

/// Text that is only shown.
class TextField : public View {
public:
    /// Of the outlets that it is connected to.
    static constexpr auto kind = ViewKind::textField;

    using View::View; ///< For storyboards.

    /// Replaces the text, which is UTF-8.
    void setStringValue(const std::string& text) const;
};

/// A button with a title; what it does, the storyboard connects.
class Button : public View {
public:
    /// Of the outlets that it is connected to.
    static constexpr auto kind = ViewKind::button;

    using View::View; ///< For storyboards.

    /// Replaces the title, which is UTF-8.
    void setTitle(const std::string& title) const;

    /// Whether it is left out of the window, for the mouse, the keyboard and a screen reader.
    void setHidden(bool isHidden) const;

    /// Gives it its window's keyboard, drawn so, once that shows. Where the user's settings
    /// keep the keyboard from buttons (macOS), the window has it.
    void takeFocus() const;
};

/// A frame with a background around other views.
class Box : public View {
public:
    /// Of the outlets that it is connected to.
    static constexpr auto kind = ViewKind::box;

    using View::View; ///< For storyboards.
};

/// What a view is for those who do not see it.
enum class AccessibilityRole : std::uint8_t { image };

/// A picture: the icon of an application, or a symbol.
class ImageView : public View {
public:
    /// Of the outlets that it is connected to.
    static constexpr auto kind = ViewKind::imageView;

    using View::View; ///< For storyboards.

    /// The icon with which the system shows the application at the URL (of a file). False, and no
    /// change, where there is none to be had. The description is for those who do not see it.
    bool showApplicationIcon(const Platform::URL& application,
                             const std::string& accessibilityDescription) const;

    /// A symbol of the system, in the colour of text. An empty description leaves the system's
    /// own, if any. A name that is not known shows nothing.
    void showSymbol(const std::string& name, const std::string& accessibilityDescription) const;

    /// Has the symbol that is shown bounce upwards, layer by layer, from now on whenever the window
    /// shows; nothing where the user or the system has no such effects (macOS has them from 14.0
    /// on).
    void addBounceUpByLayer(const EffectRepeat& repeat) const;

    /// Replaces the role that the layout gives it.
    void setAccessibilityRole(AccessibilityRole role) const;
};

} // namespace CorbelKit
