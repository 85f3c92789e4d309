#include "Tools/JobLink/JobLines.h"

#include "Tools/JobLink/Core/Texts.h"

#include <gtkmm/adjustment.h>

namespace JobLink {
namespace {

constexpr int space = 12;

// In the order of `JobLines::Line`.
constexpr std::array captions{"Runs",        "Starts",  "File",   "Owner",
                              "Permissions", "Changed", "Package"};

} // namespace

JobLines::JobLines() {
    constexpr int greatestHeight = 420;
    constexpr int columns = 46;
    set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    set_propagate_natural_height();
    set_max_content_height(greatestHeight);
    grid_.set_column_spacing(space);
    grid_.set_row_spacing(space / 2);
    int number = 0;
    for (auto& [caption, text] : rows_) {
        caption.set_text(localizedString(captions.at(static_cast<std::size_t>(number))));
        caption.set_halign(Gtk::Align::END);
        caption.set_valign(Gtk::Align::START);
        caption.add_css_class("dim-label");
        text.set_halign(Gtk::Align::START);
        text.set_xalign(0);
        text.set_wrap();
        text.set_wrap_mode(Pango::WrapMode::WORD_CHAR); // a path has no spaces
        text.set_width_chars(columns);
        text.set_max_width_chars(columns);
        grid_.attach(caption, 0, number);
        grid_.attach(text, 1, number);
        caption.hide();
        text.hide();
        ++number;
    }
    set_child(grid_);
    get_vadjustment()->signal_changed().connect(
        sigc::mem_fun(*this, &JobLines::takeKeyboardIfNeeded));
    set_focusable(false);
}

// It stops here where there is something to scroll.
void JobLines::takeKeyboardIfNeeded() {
    const auto range = get_vadjustment();
    set_focusable(range->get_upper() > range->get_page_size());
}

void JobLines::set(Line line, const std::string& text) {
    auto& row = rows_.at(static_cast<std::size_t>(line));
    row.text.set_text(text);
    row.caption.set_visible(!text.empty());
    row.text.set_visible(!text.empty());
}

} // namespace JobLink
