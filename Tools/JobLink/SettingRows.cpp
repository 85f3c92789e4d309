#include "Tools/JobLink/SettingRows.h"

#include "CorbelKit/Services/PrintableText.h"
#include "Tools/JobLink/Core/Texts.h"

#include <glibmm/main.h>
#include <gtk/gtk.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/root.h>
#include <gtkmm/tooltip.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace JobLink {
namespace {

constexpr int gap = 8;

using Clock = std::chrono::steady_clock;

// Of a frame, what the drawing can spare.
constexpr std::chrono::milliseconds timeAtOnce(8);

} // namespace

SettingRows::SettingRows(std::function<void(const std::string& text)> remove,
                         std::function<void()> focusGone)
    : remove_(std::move(remove))
    , focusGone_(std::move(focusGone)) {
    set_selection_mode(Gtk::SelectionMode::NONE);
    add_css_class("rich-list");
    add_css_class("frame");
}

void SettingRows::show(std::vector<std::string> texts) {
    wanted_ = std::move(texts);
    next_ = 0;
    left_.clear();
    for (const auto& text : wanted_)
        ++left_[text];
    if (advance() && !advancing_.connected())
        advancing_ = Glib::signal_idle().connect(sigc::mem_fun(*this, &SettingRows::advance));
}

/// Whether there is more to do.
bool SettingRows::advance() {
    const auto end = Clock::now() + timeAtOnce;
    while (next_ < std::max(shown_.size(), wanted_.size())) {
        if (Clock::now() >= end)
            return true;
        advanceOne();
    }
    return false;
}

void SettingRows::advanceOne() {
    if (next_ < shown_.size() && !left_.contains(shown_[next_])) {
        removeRow();
        return;
    }
    const auto& text = wanted_[next_];
    if (next_ == shown_.size() || shown_[next_] != text)
        insertRow(text);
    if (const auto found = left_.find(text); --found->second == 0)
        left_.erase(found);
    ++next_;
}

void SettingRows::insertRow(const std::string& text) {
    shown_.insert(shown_.begin() + static_cast<std::ptrdiff_t>(next_), text);
    const auto shown = CorbelKit::printableText(text);
    auto& line = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, gap);
    auto& label = *Gtk::make_managed<Gtk::Label>(shown);
    label.set_xalign(0);
    label.set_hexpand();
    label.set_ellipsize(Pango::EllipsizeMode::MIDDLE);
    line.append(label);
    auto& remove = *Gtk::make_managed<Gtk::Button>();
    const auto name = localizedString("Remove %@", shown);
    remove.set_icon_name("list-remove-symbolic");
    remove.set_has_frame(false);
    remove.set_has_tooltip(); // asked for when it is needed: setting it takes a display's answer
    const auto showName = [name](int, int, bool, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
        tooltip->set_text(name);
        return true;
    };
    remove.signal_query_tooltip().connect(showName, false);
    gtk_accessible_update_property(GTK_ACCESSIBLE(remove.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   name.c_str(), -1);
    remove.signal_clicked().connect([this, text] { remove_(text); });
    line.append(remove);
    insert(line, static_cast<int>(next_));
    line.get_parent()->set_focusable(false); // of the row, what can be done is the button's
}

void SettingRows::removeRow() {
    shown_.erase(shown_.begin() + static_cast<std::ptrdiff_t>(next_));
    auto* const row = get_row_at_index(static_cast<int>(next_));
    const auto* const root = get_root();
    const auto* const focused = root != nullptr ? root->get_focus() : nullptr;
    const bool hasFocus = focused != nullptr && focused->is_ancestor(*row);
    remove(*row);
    if (hasFocus)
        focusGone_();
}

} // namespace JobLink
