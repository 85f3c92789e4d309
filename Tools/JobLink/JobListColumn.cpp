#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/TextServices.h"
#include "Tools/JobLink/Core/JobWording.h"
#include "Tools/JobLink/Core/Texts.h"
#include "Tools/JobLink/JobListRow.h"

#include <gtk/gtk.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/listitem.h>
#include <gtkmm/signallistitemfactory.h>

namespace JobLink {
namespace {

constexpr auto leftToRight = "\u200e"; // in right-to-left text, too, the date comes first

std::string newsText(ListedJob::News news) {
    switch (news) {
    case ListedJob::News::added:
        return CorbelKit::localizedString("New");
    case ListedJob::News::modified:
        return Platform::TextServices::capitalized(CorbelKit::localizedString("modified"));
    case ListedJob::News::none:
        break;
    }
    return {};
}

std::string textIn(JobColumn column, const ListedJob& job) {
    switch (column) {
    case JobColumn::name:
        return job.name;
    case JobColumn::runs:
        return job.runs;
    case JobColumn::starts:
        return job.starts;
    case JobColumn::changed:
        return job.changed ? leftToRight + timeText(*job.changed) : std::string();
    }
    return {};
}

/// What is seen of a job in one column. The name's has its place below, and what is new of it.
class Cell final : public Gtk::Box {
public:
    explicit Cell(JobColumn column)
        : Gtk::Box(Gtk::Orientation::VERTICAL)
        , column_(column) {
        set_valign(Gtk::Align::CENTER);
        append(first_);
        addLabel(first_, text_, Pango::EllipsizeMode::END);
        if (column_ == JobColumn::name) {
            append(second_);
            addLabel(second_, news_, Pango::EllipsizeMode::NONE);
            addLabel(second_, place_, Pango::EllipsizeMode::MIDDLE);
            place_.add_css_class("dim-label");
            for (auto* const label : {&news_, &place_})
                label->add_css_class("caption");
        }
    }

    void show(const Glib::RefPtr<JobListRow>& row) {
        clear();
        row_ = row;
        connection_ = row_->signalChanged().connect([this] { update(); });
        update();
    }

    void clear() {
        connection_.disconnect();
        row_.reset();
    }

private:
    static void addLabel(Gtk::Box& line, Gtk::Label& label, Pango::EllipsizeMode mode) {
        label.set_xalign(0);
        label.set_single_line_mode();
        label.set_ellipsize(mode);
        line.append(label);
    }

    void update() {
        const auto& job = row_->job();
        const auto text = textIn(column_, job);
        text_.set_text(text);
        if (column_ != JobColumn::name) {
            set_tooltip_text(text);
            return;
        }
        set_tooltip_text(job.place);
        const auto news = newsText(job.news);
        news_.set_text(news);
        news_.set_visible(!news.empty());
        place_.set_text(job.place);
        Pango::AttrList attributes;
        auto weight = Pango::Attribute::create_attr_weight(news.empty() ? Pango::Weight::NORMAL
                                                                        : Pango::Weight::BOLD);
        attributes.insert(weight);
        text_.set_attributes(attributes);
    }

    const JobColumn column_;
    Gtk::Box first_;
    Gtk::Box second_{Gtk::Orientation::HORIZONTAL, 6};
    Gtk::Label text_;
    Gtk::Label news_;
    Gtk::Label place_;
    Glib::RefPtr<JobListRow> row_;
    sigc::connection connection_;
};

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
        item->set_child(*Gtk::make_managed<Cell>(column));
    });
    factory->signal_bind().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
        const auto row = std::dynamic_pointer_cast<JobListRow>(item->get_item());
        if (auto* const cell = dynamic_cast<Cell*>(item->get_child()); cell != nullptr && row)
            cell->show(row);
    });
    factory->signal_unbind().connect([](const Glib::RefPtr<Gtk::ListItem>& item) {
        if (auto* const cell = dynamic_cast<Cell*>(item->get_child()))
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
