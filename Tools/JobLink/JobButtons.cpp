#include "Tools/JobLink/JobButtons.h"

#include "Tools/JobLink/Core/Texts.h"

namespace JobLink {
namespace {

void set(Gtk::Button& button, JobButtons::Side side, const char* forth, const char* back) {
    using Side = JobButtons::Side;
    button.set_visible(side != Side::absent);
    button.set_sensitive(side != Side::unavailable);
    button.set_label(localizedString(side == Side::back ? back : forth));
}

} // namespace

JobButtons::JobButtons()
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, 8)
    , show_(localizedString("_Show in Files"))
    , copy_(localizedString("_Copy Path")) {
    for (auto* const button : {&show_, &copy_, &turnOff_, &ignore_}) {
        button->set_use_underline();
        append(*button);
    }
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
