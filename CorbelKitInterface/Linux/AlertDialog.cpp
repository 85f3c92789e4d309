#include "CorbelKitInterface/Linux/AlertDialog.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "CorbelKitInterface/Linux/Toolkit.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>
#include <gtkmm/stylecontext.h>
#include <gtkmm/windowhandle.h>

#include <algorithm>

namespace CorbelKit {
namespace {

using Style = Platform::Alert::Style;

// In the program rather than among the kit's resources: an alert must not need what may be missing.
constexpr auto styleSheet = R"(
.corbel-alert .titlebar { min-height: 0; margin: 0; padding: 0; border: none; box-shadow: none; background: none; }
.corbel-alert .content { padding: 28px 24px 20px 24px; }
.corbel-alert .message { font-weight: bold; font-size: 1.15em; }
.corbel-alert .warning { color: @warning_color; }
.corbel-alert .informational { color: @theme_selected_bg_color; }
.corbel-alert .critical { color: @error_color; }
)";

struct Looks {
    const char* icon;
    const char* styleClass;
};

Looks looksOf(Style style) {
    switch (style) {
    case Style::informational:
        return {.icon = "dialog-information-symbolic", .styleClass = "informational"};
    case Style::critical:
        return {.icon = "dialog-error-symbolic", .styleClass = "critical"};
    case Style::warning:
        break;
    }
    return {.icon = "dialog-warning-symbolic", .styleClass = "warning"};
}

void addStyleSheet() {
    static const bool isAdded = [] {
        const auto provider = Gtk::CssProvider::create();
        provider->load_from_data(styleSheet);
        Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider,
                                                    GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
        return true;
    }();
    static_cast<void>(isAdded);
}

Gtk::Image& makeIcon(Style style) {
    constexpr int edge = 56;
    auto& icon = *Gtk::make_managed<Gtk::Image>();
    const auto looks = looksOf(style);
    icon.set_from_icon_name(looks.icon);
    icon.set_pixel_size(edge);
    icon.set_margin_bottom(8);
    icon.add_css_class(looks.styleClass);
    icon.property_accessible_role() =
        Gtk::Accessible::Role::PRESENTATION; // the dialog's role says it
    return icon;
}

Gtk::Label& makeLabel(const std::string& text, const char* styleClass) {
    constexpr int width = 40;
    auto& label = *Gtk::make_managed<Gtk::Label>(text);
    label.set_wrap();
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR); // a path has no spaces
    label.set_justify(Gtk::Justification::CENTER);
    label.set_max_width_chars(width);
    label.add_css_class(styleClass);
    return label;
}

Glib::RefPtr<Gtk::ShortcutController> closeByEscape() {
    auto controller = Gtk::ShortcutController::create();
    controller->add_shortcut(Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string("Escape"),
                                                   Gtk::NamedAction::create("window.close")));
    return controller;
}

Gtk::Window* activeWindow() {
    const auto windows = Gtk::Window::list_toplevels();
    const auto found = std::ranges::find_if(
        windows, [](const Gtk::Window* window) { return window->is_active(); });
    return found != windows.end() ? *found : nullptr;
}

Gtk::Widget& makeContent(const Platform::Alert& alert, Gtk::Button& button) {
    constexpr int width = 300;
    auto& content = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 8);
    content.add_css_class("content");
    content.set_size_request(width, -1);
    content.append(makeIcon(alert.style));
    if (!alert.messageText.empty())
        content.append(makeLabel(alert.messageText, "message"));
    if (!alert.informativeText.empty())
        content.append(makeLabel(alert.informativeText, "information"));
    button.set_margin_top(12);
    button.add_css_class("suggested-action");
    content.append(button);
    auto& handle = *Gtk::make_managed<Gtk::WindowHandle>(); // without a title bar to take it by
    handle.set_child(content);
    return handle;
}

} // namespace

std::vector<AlertDialog*> AlertDialog::up_;

AlertDialog::AlertDialog(const Platform::Alert& alert)
    : button_(alert.buttonTitle.empty() ? localizedString("OK") : alert.buttonTitle) {
    addStyleSheet();
    add_css_class("corbel-alert");
    property_accessible_role() = Gtk::Accessible::Role::ALERT_DIALOG;
    set_title(alert.messageText);
    set_modal();
    set_resizable(false);
    set_titlebar(*Gtk::make_managed<Gtk::Box>());
    set_child(makeContent(alert, button_));
    set_default_widget(button_);
    set_focus(button_);
    add_controller(closeByEscape());
    if (auto* const window = activeWindow())
        set_transient_for(*window);
    button_.signal_clicked().connect([this] { close(); });
    signal_close_request().connect(
        [this] {
            loop_->quit();
            return true; // it is hidden where it was shown
        },
        false);
}

void AlertDialog::run() {
    present();
    set_focus_visible(); // so that one sees what Return does
    up_.push_back(this);
    loop_->run();
    up_.pop_back();
    hide();
}

void AlertDialog::dismissAll() {
    for (auto* const dialog : up_)
        dialog->loop_->quit();
}

} // namespace CorbelKit
