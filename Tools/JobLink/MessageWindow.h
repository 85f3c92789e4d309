#pragma once

#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/window.h>

#include <string>

namespace JobLink {

/// Says why a link was not followed: one window, whatever comes. Main thread.
class MessageWindow final : public Gtk::Window {
public:
    MessageWindow();

    /// In place of what it said before. The detail is what was sent, safe to show.
    void say(const std::string& message, const std::string& detail);

private:
    Gtk::Label message_;
    Gtk::Label detail_;
    Gtk::Button close_;
};

} // namespace JobLink
