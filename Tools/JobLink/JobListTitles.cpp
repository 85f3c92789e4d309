#include "Tools/JobLink/JobListTitles.h"

#include <gtk/gtk.h>
#include <gtkmm/columnviewcolumn.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

namespace JobLink {
namespace {

/// As a click on the title does: again, the other way round.
void sortBy(Gtk::ColumnView& table, const Gtk::Widget& title,
            const Glib::RefPtr<Gtk::ColumnViewColumn>& column) {
    const auto* const line = title.get_first_child();
    const auto* const arrow = line != nullptr ? line->get_last_child() : nullptr;
    const bool isAscending = arrow != nullptr && arrow->has_css_class("ascending");
    // Or else the column that it was sorted by keeps its arrow.
    gtk_column_view_sort_by_column(table.gobj(), nullptr, GTK_SORT_ASCENDING);
    table.sort_by_column(column,
                         isAscending ? Gtk::SortType::DESCENDING : Gtk::SortType::ASCENDING);
}

} // namespace

void makeTitlesAccessible(Gtk::ColumnView& table) {
    const auto columns = table.get_columns();
    auto* const header = table.get_first_child();
    header->set_can_focus();
    auto* title = header->get_first_child();
    for (guint index = 0; title != nullptr; title = title->get_next_sibling(), ++index) {
        const auto column =
            std::dynamic_pointer_cast<Gtk::ColumnViewColumn>(columns->get_object(index));
        gtk_accessible_update_property(GTK_ACCESSIBLE(title->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                       column->get_title().c_str(), -1);
        const auto sort = [&table, title, column](Gtk::Widget&, const Glib::VariantBase&) {
            sortBy(table, *title, column);
            return true;
        };
        auto keys = Gtk::ShortcutController::create();
        keys->add_shortcut(
            Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string("Return|KP_Enter|space"),
                                  Gtk::CallbackAction::create(sort)));
        title->set_focusable();
        title->add_controller(keys);
    }
}

} // namespace JobLink
