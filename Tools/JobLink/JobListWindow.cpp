#include "Tools/JobLink/JobListWindow.h"

#include "Tools/JobLink/Core/Texts.h"
#include "Tools/JobLink/WindowKeys.h"

#include <glibmm/miscutils.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

#include <utility>

namespace JobLink {

JobListWindow::JobListWindow(std::function<void(const std::string& path)> showJob)
    : jobs_(std::move(showJob)) {
    constexpr int width = 980;
    constexpr int height = 600;
    set_title(Glib::get_application_name());
    set_default_size(width, height);
    pages_.add(jobs_, "jobs", localizedString("Jobs"));
    pages_.add(reporting_, "settings", localizedString("Settings"));
    switcher_.set_stack(pages_);
    header_.set_title_widget(switcher_);
    set_titlebar(header_);
    set_child(pages_);

    auto keys = Gtk::ShortcutController::create();
    const auto search = [this](Gtk::Widget&, const Glib::VariantBase&) {
        pages_.set_visible_child(jobs_);
        jobs_.startSearch();
        return true;
    };
    keys->add_shortcut(Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string("<Control>f"),
                                             Gtk::CallbackAction::create(search)));
    add_controller(keys);
    closeByEscape(*this);
}

} // namespace JobLink
