#include "Tools/JobLink/JobListCell.h"

#include "CorbelKit/Services/ResourceBundle.h"
#include "Platform/TextServices.h"
#include "Tools/JobLink/Core/JobWording.h"

#include <gtk/gtk.h>
#include <gtkmm/tooltip.h>

namespace JobLink {
namespace {

constexpr gunichar leftToRightMark = 0x200E; // in right-to-left text, too, the date comes first

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
        return job.changed ? Glib::ustring(1, leftToRightMark).raw() + timeText(*job.changed)
                           : std::string();
    }
    return {};
}

unsigned usualLength(JobColumn column) {
    constexpr unsigned ofTime = 17;
    constexpr unsigned ofPhrase = 20;
    constexpr unsigned ofPath = 40;
    if (column == JobColumn::changed)
        return ofTime;
    return column == JobColumn::starts ? ofPhrase : ofPath;
}

/// Whether lines of the text begin where the window's end: its first letter decides.
bool beginsOpposite(const Glib::ustring& text, bool isWindowRightToLeft) {
    for (const auto letter : text) {
        switch (g_unichar_get_script(letter)) {
        case G_UNICODE_SCRIPT_ARABIC:
        case G_UNICODE_SCRIPT_HEBREW:
        case G_UNICODE_SCRIPT_NKO:
        case G_UNICODE_SCRIPT_SYRIAC:
        case G_UNICODE_SCRIPT_THAANA:
            return !isWindowRightToLeft;
        case G_UNICODE_SCRIPT_COMMON:
        case G_UNICODE_SCRIPT_INHERITED:
            if (letter != leftToRightMark)
                break;
            [[fallthrough]];
        default:
            return isWindowRightToLeft;
        }
    }
    return false;
}

/// At the side where the window's lines begin; by itself it is where the text's own do.
void inscribe(Gtk::Inscription& inscription, const Glib::ustring& text) {
    const bool isRightToLeft = inscription.get_direction() == Gtk::TextDirection::RTL;
    inscription.set_xalign(beginsOpposite(text, isRightToLeft) ? 1 : 0);
    inscription.set_text(text);
}

} // namespace

JobListCell::PlaceLine::PlaceLine()
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, 6) {
    append(news_);
    append(place_);
    news_.set_visible(false);
    place_.set_text_overflow(Gtk::Inscription::Overflow::ELLIPSIZE_MIDDLE);
    place_.set_hexpand();
    place_.add_css_class("dim-label");
    add_css_class("caption");
}

void JobListCell::PlaceLine::show(const std::string& news, const std::string& place) {
    inscribe(place_, place);
    if (news_.get_text().raw() == news)
        return;
    news_.set_text(news);
    news_.set_visible(!news.empty());
}

JobListCell::JobListCell(JobColumn column)
    : Gtk::Box(Gtk::Orientation::VERTICAL)
    , column_(column) {
    set_valign(Gtk::Align::CENTER);
    text_.set_text_overflow(Gtk::Inscription::Overflow::ELLIPSIZE_END);
    text_.set_nat_chars(usualLength(column));
    append(text_);
    if (column == JobColumn::name)
        append(place_.emplace());
    // Asked for where the pointer rests. With each text that is set beforehand, the toolkit asks
    // the display where the pointer is, and waits for the answer.
    set_has_tooltip();
    const auto showTooltip = [this](int, int, bool, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
        const auto text = tooltipText();
        tooltip->set_text(text);
        return !text.empty();
    };
    signal_query_tooltip().connect(showTooltip, false);
}

void JobListCell::show(const Glib::RefPtr<JobListRow>& row) {
    clear();
    row_ = row;
    connection_ = row_->signalChanged().connect([this] { update(); });
    update();
}

void JobListCell::clear() {
    connection_.disconnect();
    row_.reset();
}

std::string JobListCell::tooltipText() const {
    if (!row_)
        return {};
    return place_ ? row_->job().place : textIn(column_, row_->job());
}

void JobListCell::update() {
    const auto& job = row_->job();
    inscribe(text_, textIn(column_, job));
    if (!place_)
        return;
    const auto news = newsText(job.news);
    place_->show(news, job.place);
    setBold(!news.empty());
    // To a screen reader the row is else of the toolkit's class.
    auto* const cell = get_parent();
    if (auto* const row = cell != nullptr ? cell->get_parent() : nullptr) {
        gtk_accessible_update_property(GTK_ACCESSIBLE(row->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                       job.name.c_str(), -1);
    }
}

void JobListCell::setBold(bool isBold) {
    if (isBold == isBold_)
        return;
    isBold_ = isBold;
    Pango::AttrList attributes;
    auto weight =
        Pango::Attribute::create_attr_weight(isBold ? Pango::Weight::BOLD : Pango::Weight::NORMAL);
    attributes.insert(weight);
    text_.set_attributes(attributes);
}

} // namespace JobLink
