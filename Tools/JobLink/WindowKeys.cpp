#include "Tools/JobLink/WindowKeys.h"

#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

namespace JobLink {

void closeByEscape(Gtk::Window& window) {
    auto controller = Gtk::ShortcutController::create();
    controller->add_shortcut(Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string("Escape"),
                                                   Gtk::NamedAction::create("window.close")));
    window.add_controller(controller);
}

} // namespace JobLink
