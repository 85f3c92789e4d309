#pragma once

#include <gtkmm/box.h>
#include <gtkmm/button.h>

#include <cstdint>

namespace JobLink {

/// What can be done about a job. Main thread.
class JobButtons final : public Gtk::Box {
public:
    JobButtons();

    /// What a button that has two sides does when it is pressed.
    enum class Side : std::uint8_t { absent, unavailable, forth, back };

    void setIgnore(Side side);
    void setTurnOff(Side side);

    Gtk::Button& show() { return show_; }

    Gtk::Button& copy() { return copy_; }

    Gtk::Button& ignore() { return ignore_; }

    Gtk::Button& turnOff() { return turnOff_; }

private:
    Gtk::Button show_;
    Gtk::Button copy_;
    Gtk::Button turnOff_;
    Gtk::Button ignore_;
};

} // namespace JobLink
