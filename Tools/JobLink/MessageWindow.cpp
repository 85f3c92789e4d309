#include "Tools/JobLink/MessageWindow.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "Tools/JobLink/WindowKeys.h"

#include <glibmm/miscutils.h>
#include <gtkmm/box.h>

namespace JobLink {

MessageWindow::MessageWindow()
    : close_(CorbelKit::localizedString("OK")) {
    constexpr int width = 420;
    constexpr int margin = 24;
    constexpr int mostLines = 6;
    set_title(Glib::get_application_name());
    set_default_size(width, -1);
    set_resizable(false);
    auto& content = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, margin / 2);
    content.set_margin(margin);
    for (auto* const label : {&message_, &detail_}) {
        label->set_wrap();
        label->set_wrap_mode(Pango::WrapMode::WORD_CHAR);
        label->set_max_width_chars(1); // as wide as the window
        label->set_hexpand();
        label->set_xalign(0);
        content.append(*label);
    }
    detail_.set_lines(mostLines);
    detail_.set_ellipsize(Pango::EllipsizeMode::END);
    detail_.add_css_class("dim-label");
    close_.set_halign(Gtk::Align::END);
    close_.set_margin_top(margin / 2);
    close_.add_css_class("suggested-action");
    close_.signal_clicked().connect([this] { close(); });
    content.append(close_);
    set_child(content);
    set_default_widget(close_);
    set_focus(close_);
    closeByEscape(*this);
}

void MessageWindow::say(const std::string& message, const std::string& detail) {
    message_.set_text(message);
    detail_.set_text(detail);
}

} // namespace JobLink
