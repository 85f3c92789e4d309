#pragma once

#include "Tools/JobLink/Core/JobList.h"
#include "Tools/JobLink/JobListRows.h"

#include <gtkmm/box.h>
#include <gtkmm/columnview.h>
#include <gtkmm/filter.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/searchentry.h>
#include <gtkmm/singleselection.h>

#include <functional>
#include <memory>
#include <string>

namespace JobLink {

/// All jobs in a table that can be searched and sorted. Main thread.
class JobListPage final : public Gtk::Box {
public:
    /// `showJob` opens the job at the path in its window.
    explicit JobListPage(std::function<void(const std::string& path)> showJob);

    void startSearch();

private:
    void addSearch();
    void addTable();
    void startReading();
    void take(JobList::Change change);
    void open(unsigned position);

    const std::function<void(const std::string& path)> showJob_;
    Gtk::SearchEntry search_;
    Gtk::Overlay overlay_;
    Gtk::ScrolledWindow scrolled_;
    Gtk::ColumnView table_;
    Gtk::Label state_; // in the place of rows where there is none
    JobSearch sought_{""};
    JobListRows rows_;
    Glib::RefPtr<Gtk::Filter> filter_;
    Glib::RefPtr<Gtk::SingleSelection> shown_; // the found ones, sorted
    bool isComplete_ = false;
    bool isStale_ = false; // jobs have become others since the rows were found and sorted
    // What arrives later looks whether the page is still there.
    const std::shared_ptr<JobListPage*> self_ = std::make_shared<JobListPage*>(this);
    std::shared_ptr<JobList> jobs_;
};

} // namespace JobLink
