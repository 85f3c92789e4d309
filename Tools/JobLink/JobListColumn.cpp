#include "Tools/JobLink/JobListCell.h"

#include <gtk/gtk.h>
#include <gtkmm/listitem.h>
#include <gtkmm/signallistitemfactory.h>

namespace JobLink {
namespace {

int compare(const void* first, const void* second, void* column) {
    const auto* const one = JobListRow::wrapped(const_cast<void*>(first));
    const auto* const other = JobListRow::wrapped(const_cast<void*>(second));
    if (one == nullptr || other == nullptr)
        return 0;
    const auto order =
        compareJobs(one->job(), other->job(), static_cast<JobColumn>(GPOINTER_TO_INT(column)));
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

} // namespace

Glib::RefPtr<Gtk::ColumnViewColumn> makeJobColumn(JobColumn column, const Glib::ustring& title) {
    auto factory = Gtk::SignalListItemFactory::create();
    factory->signal_setup().connect([column](const Glib::RefPtr<Gtk::ListItem>& item) {
        item->set_child(*Gtk::make_managed<JobListCell>(column));
    });
    factory->signal_bind().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
        const auto row = std::dynamic_pointer_cast<JobListRow>(item->get_item());
        if (auto* const cell = dynamic_cast<JobListCell*>(item->get_child());
            cell != nullptr && row)
            cell->show(row);
    });
    factory->signal_unbind().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
        if (auto* const cell = dynamic_cast<JobListCell*>(item->get_child()))
            cell->clear();
    });
    auto made = Gtk::ColumnViewColumn::create(title, factory);
    made->set_resizable();
    made->set_expand(column != JobColumn::changed);
    made->set_sorter(Glib::wrap(GTK_SORTER(
        gtk_custom_sorter_new(compare, GINT_TO_POINTER(static_cast<int>(column)), nullptr))));
    return made;
}

} // namespace JobLink
