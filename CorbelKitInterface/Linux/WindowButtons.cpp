#include "CorbelKitInterface/Linux/WindowButtons.h"

#include "CorbelKit/Services/ResourceBundle.h"

#include <gtkmm/button.h>
#include <gtkmm/headerbar.h>
#include <gtkmm/settings.h>

#include <functional>
#include <string>
#include <string_view>

namespace CorbelKit {
namespace {

// In GTK's own words, of which a window that has no more to offer keeps one: "buttons:buttons",
// left and right, or the other way round where that is how one reads.
std::string closeAlone(std::string_view layout) {
    constexpr std::string_view close = "close";
    const auto place = layout.find(close);
    if (place == std::string_view::npos)
        return ":";
    return place < layout.find(':') ? "close:" : ":close";
}

void forEachButton(Gtk::Widget& widget, const std::function<void(Gtk::Button& button)>& task) {
    if (auto* const button = dynamic_cast<Gtk::Button*>(&widget)) {
        task(*button);
        return;
    }
    for (auto* child = widget.get_first_child(); child != nullptr;
         child = child->get_next_sibling())
        forEachButton(*child, task);
}

void describe(Gtk::Button& button, const std::string& text) {
    button.set_tooltip_text(text);
    auto* const accessible = GTK_ACCESSIBLE(button.gobj());
    gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, text.c_str(), -1);
    gtk_accessible_reset_property(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION);
}

} // namespace

void dressWindowButtons(Gtk::Window& window) {
    if (auto* const bar = dynamic_cast<Gtk::HeaderBar*>(window.get_titlebar())) {
        const auto desktop = Gtk::Settings::get_default()->property_gtk_decoration_layout();
        bar->set_decoration_layout(closeAlone(desktop.get_value().raw()));
    }
    forEachButton(window, [](Gtk::Button& button) {
        if (button.has_css_class("help")) {
            button.set_label(localizedString("?"));
            describe(button, localizedString("Help"));
        } else if (button.has_css_class("close")) {
            describe(button, localizedString("Close"));
        }
    });
}

} // namespace CorbelKit
