#pragma once

#include "Tools/JobLink/Core/ListedJob.h"

#include <giomm/liststore.h>
#include <glibmm/object.h>
#include <gtkmm/columnviewcolumn.h>
#include <gtkmm/sorter.h>
#include <sigc++/sigc++.h>

namespace JobLink {

/// A row of the list: a job as it is by now. Main thread.
class JobListRow final : public Glib::Object {
public:
    static Glib::RefPtr<JobListRow> create(ListedJob job);

    const ListedJob& job() const { return job_; }

    void setJob(ListedJob job);

    sigc::signal<void()>& signalChanged() { return changed_; }

    /// The one that the toolkit has; null where it is no row.
    static JobListRow* wrapped(void* object);

private:
    explicit JobListRow(ListedJob job);

    ListedJob job_;
    sigc::signal<void()> changed_;
};

/// A column of the rows, with the order that a click on its title gives them.
Glib::RefPtr<Gtk::ColumnViewColumn> makeJobColumn(JobColumn column, const Glib::ustring& title);

} // namespace JobLink
