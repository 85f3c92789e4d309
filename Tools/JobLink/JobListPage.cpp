#include "Tools/JobLink/JobListPage.h"

#include "Tools/JobLink/Core/Texts.h"
#include "Tools/JobLink/JobListTitles.h"
#include "Vesper_Pro_Agent/JobFolders.h"

#include <glibmm/main.h>
#include <gtk/gtk.h>
#include <gtkmm/filterlistmodel.h>
#include <gtkmm/sortlistmodel.h>

#include <array>
#include <utility>

namespace JobLink {
namespace {

constexpr int margin = 12;

} // namespace

JobListPage::JobListPage(std::function<void(const std::string& path)> showJob)
    : Gtk::Box(Gtk::Orientation::VERTICAL)
    , showJob_(std::move(showJob)) {
    addSearch();
    addTable();
    // Once the window is there: until then, what reads would take the processors from what draws.
    Glib::signal_idle().connect_once([weak = std::weak_ptr(self_)] {
        if (const auto self = weak.lock())
            (*self)->startReading();
    });
}

void JobListPage::startReading() {
    jobs_ = JobList::make(Vesper_Pro_Agent::jobFolders(),
                          [weak = std::weak_ptr(self_)](JobList::Change change) {
                              if (const auto self = weak.lock())
                                  (*self)->take(std::move(change));
                          });
}

void JobListPage::addSearch() {
    const auto caption = localizedString("Search jobs");
    g_object_set(search_.gobj(), "placeholder-text", caption.c_str(),
                 nullptr); // gtkmm 4.8 takes it for another entry
    gtk_accessible_update_property(GTK_ACCESSIBLE(search_.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   caption.c_str(), -1);
    search_.set_margin(margin / 2);
    search_.set_key_capture_widget(table_);
    // At once, and not when the entry says that typing has paused: Return opens what is found then.
    search_.signal_changed().connect([this] {
        sought_ = JobSearch(search_.get_text().raw());
        gtk_filter_changed(filter_->gobj(), GTK_FILTER_CHANGE_DIFFERENT);
        shown_->set_selected(0);
        state_.set_visible(isComplete_ && shown_->get_n_items() == 0);
    });
    search_.signal_activate().connect([this] { open(shown_->get_selected()); });
    search_.signal_stop_search().connect([this] {
        if (search_.get_text().empty()) {
            activate_action("window.close");
        } else {
            search_.set_text("");
        }
    });
    append(search_);
}

void JobListPage::addTable() {
    const auto isFound = +[](void* item, void* page) -> gboolean {
        const auto* const row = JobListRow::wrapped(item);
        return row != nullptr && static_cast<JobListPage*>(page)->sought_.finds(row->job()) ? TRUE
                                                                                            : FALSE;
    };
    filter_ = Glib::wrap(GTK_FILTER(gtk_custom_filter_new(isFound, this, nullptr)));
    constexpr std::array columns = {
        std::pair(JobColumn::name, "Name"), std::pair(JobColumn::runs, "Runs"),
        std::pair(JobColumn::starts, "Starts"), std::pair(JobColumn::changed, "Changed")};
    for (const auto& [column, title] : columns)
        table_.append_column(makeJobColumn(column, localizedString(title)));
    makeTitlesAccessible(table_);
    gtk_accessible_update_property(GTK_ACCESSIBLE(table_.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   localizedString("Jobs").c_str(), -1);
    const auto firstColumn =
        std::dynamic_pointer_cast<Gtk::ColumnViewColumn>(table_.get_columns()->get_object(0));
    table_.sort_by_column(firstColumn, Gtk::SortType::ASCENDING);
    const auto found = Gtk::FilterListModel::create(rows_.model(), filter_);
    shown_ = Gtk::SingleSelection::create(Gtk::SortListModel::create(found, table_.get_sorter()));
    table_.set_model(shown_);
    table_.set_show_row_separators();
    table_.signal_activate().connect([this](unsigned position) { open(position); });
    scrolled_.set_child(table_);
    scrolled_.set_vexpand();
    state_.set_text(localizedString("No job is found."));
    state_.set_visible(false);
    state_.add_css_class("dim-label");
    overlay_.set_child(scrolled_);
    overlay_.add_overlay(state_);
    append(overlay_);
}

void JobListPage::startSearch() {
    search_.grab_focus();
}

void JobListPage::take(JobList::Change change) {
    const bool isComplete = change.isComplete;
    isStale_ = rows_.take(std::move(change)) || isStale_;
    if (isComplete && std::exchange(isStale_, false)) { // others are found, in another order
        gtk_sorter_changed(table_.get_sorter()->gobj(), GTK_SORTER_CHANGE_DIFFERENT);
        if (!search_.get_text().empty())
            gtk_filter_changed(filter_->gobj(), GTK_FILTER_CHANGE_DIFFERENT);
    }
    isComplete_ = isComplete_ || isComplete;
    state_.set_visible(isComplete_ && shown_->get_n_items() == 0);
}

void JobListPage::open(unsigned position) {
    if (const auto row = std::dynamic_pointer_cast<JobListRow>(shown_->get_object(position)))
        showJob_(row->job().path);
}

} // namespace JobLink
