#include "CorbelKitInterface/Controls.h"

#include "CorbelKitInterface/Linux/BounceStyle.h"
#include "CorbelKitInterface/Linux/NativeView.h"
#include "CorbelKitInterface/Linux/Symbol.h"
#include "CorbelKitInterface/Linux/Toolkit.h"

#include <giomm/desktopappinfo.h>
#include <gtkmm/button.h>
#include <gtkmm/icontheme.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <gtkmm/window.h>

#include <algorithm>

namespace CorbelKit {
namespace {

// An image view is an overlay: a symbol may have several layers.
class ImageStack {
public:
    explicit ImageStack(Gtk::Widget& widget)
        : overlay_(dynamic_cast<Gtk::Overlay&>(widget)) {}

    void clear() {
        overlay_.unset_child(); // of the layout
        while (auto* const layer = overlay_.get_first_child())
            overlay_.remove_overlay(*layer);
    }

    /// In front of those before it, as large as the view.
    Gtk::Image& add() {
        auto& image = *Gtk::make_managed<Gtk::Image>();
        image.set_pixel_size(std::max(overlay_.property_width_request().get_value(),
                                      overlay_.property_height_request().get_value()));
        image.property_accessible_role() = Gtk::Accessible::Role::PRESENTATION;
        overlay_.add_overlay(image);
        return image;
    }

    Gtk::Widget* hindmost() { return overlay_.get_first_child(); }

private:
    Gtk::Overlay& overlay_;
};

void describe(Gtk::Widget& widget, const std::string& description) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   description.c_str(), -1);
}

} // namespace

void TextField::setStringValue(const std::string& text) const {
    dynamic_cast<Gtk::Label&>(native().widget).set_text(text);
}

void Button::setTitle(const std::string& title) const {
    dynamic_cast<Gtk::Button&>(native().widget).set_label(title);
}

void Button::setHidden(bool isHidden) const {
    native().widget.set_visible(!isHidden);
}

void Button::takeFocus() const {
    auto* const window = dynamic_cast<Gtk::Window*>(native().widget.get_root());
    if (window == nullptr)
        return;
    window->set_focus(native().widget);
    window->set_focus_visible();
}

bool ImageView::showApplicationIcon(const Platform::URL& application,
                                    const std::string& accessibilityDescription) const {
    const auto entry = Gio::DesktopAppInfo::create_from_filename(application.path());
    const auto icon = entry ? entry->get_icon() : Glib::RefPtr<Gio::Icon>();
    if (!icon || !Toolkit::iconTheme()->has_gicon(icon))
        return false;
    ImageStack stack(native().widget);
    stack.clear();
    stack.add().set(icon);
    describe(native().widget, accessibilityDescription);
    return true;
}

void ImageView::showSymbol(const std::string& name,
                           const std::string& accessibilityDescription) const {
    ImageStack stack(native().widget);
    stack.clear();
    for (const auto& layer : symbolLayers(name))
        stack.add().set_from_icon_name(layer);
    if (!accessibilityDescription.empty())
        describe(native().widget, accessibilityDescription);
}

void ImageView::addBounceUpByLayer(const EffectRepeat& repeat) const {
    std::size_t index = 0;
    auto* layer = ImageStack(native().widget).hindmost();
    for (; layer != nullptr; layer = layer->get_next_sibling())
        addBounce(*layer, index++, repeat);
}

void ImageView::setAccessibilityRole(AccessibilityRole role) const {
    switch (role) {
    case AccessibilityRole::image:
        native().widget.property_accessible_role() = Gtk::Accessible::Role::IMG;
        break;
    }
}

} // namespace CorbelKit
