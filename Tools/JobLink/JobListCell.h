#pragma once

#include "Tools/JobLink/JobListRow.h"

#include <gtkmm/box.h>
#include <gtkmm/inscription.h>
#include <gtkmm/label.h>

#include <optional>
#include <string>

namespace JobLink {

/// What is seen of a job in one column. Main thread.
///
/// Its texts are inscriptions, whose size does not depend on what they say: the toolkit keeps some
/// 200 rows, and would measure them all whenever one shows another job.
class JobListCell final : public Gtk::Box {
public:
    explicit JobListCell(JobColumn column);

    /// From now on, and whatever becomes of it.
    void show(const Glib::RefPtr<JobListRow>& row);

    void clear();

private:
    /// Below a job's name: what is new of it, and its place.
    class PlaceLine final : public Gtk::Box {
    public:
        PlaceLine();

        void show(const std::string& news, const std::string& place);

    private:
        Gtk::Label news_; // hidden while there is none
        Gtk::Inscription place_;
    };

    std::string tooltipText() const;
    void update();
    void setBold(bool isBold);

    const JobColumn column_;
    Gtk::Inscription text_;
    std::optional<PlaceLine> place_; // in the column of names
    bool isBold_ = false;
    Glib::RefPtr<JobListRow> row_;
    sigc::connection connection_;
};

} // namespace JobLink
