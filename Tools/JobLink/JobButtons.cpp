#include "Tools/JobLink/JobButtons.h"

#include "Tools/JobLink/Core/Texts.h"

#include <gtkmm/label.h>

#include <string>

namespace JobLink {
namespace {

// A label of its own: GTK would give screen readers a button's with its underscore, and twice.
void setLabel(Gtk::Button& button, const std::string& text) {
    auto& label = *Gtk::make_managed<Gtk::Label>(text, true);
    label.set_mnemonic_widget(button);
    button.set_child(label);
}

void set(Gtk::Button& button, JobButtons::Side side, const char* forth, const char* back) {
    using Side = JobButtons::Side;
    button.set_visible(side != Side::absent);
    button.set_sensitive(side != Side::unavailable);
    setLabel(button, localizedString(side == Side::back ? back : forth));
}

} // namespace

JobButtons::JobButtons()
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, 8) {
    for (auto* const button : {&show_, &copy_, &turnOff_, &ignore_})
        append(*button);
    setLabel(show_, localizedString("_Show in Files"));
    setLabel(copy_, localizedString("_Copy Path"));
    copy_.set_hexpand();
    copy_.set_halign(Gtk::Align::START);
    setIgnore(Side::unavailable);
    setTurnOff(Side::absent);
}

void JobButtons::setIgnore(Side side) {
    set(ignore_, side, "_Ignore This Job", "_Notify Again");
}

void JobButtons::setTurnOff(Side side) {
    set(turnOff_, side, "_Turn Off", "_Turn On Again");
}

} // namespace JobLink
