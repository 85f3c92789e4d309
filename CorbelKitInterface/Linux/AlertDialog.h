#pragma once

#include "Platform/Alert.h"

#include <glibmm/main.h>
#include <gtkmm/button.h>
#include <gtkmm/window.h>

#include <vector>

namespace CorbelKit {

/// An alert in front of the window that the user works in. It is dismissed by its button, by Return
/// or Escape, or as the desktop closes windows. Main thread, with the toolkit started.
class AlertDialog : public Gtk::Window {
public:
    explicit AlertDialog(const Platform::Alert& alert);

    /// Shows it and returns when it is dismissed. The rest of the application goes on meanwhile.
    void run();

    /// Dismisses all that are up.
    static void dismissAll();

private:
    const Glib::RefPtr<Glib::MainLoop> loop_ = Glib::MainLoop::create();
    Gtk::Button button_;
    static std::vector<AlertDialog*> up_; // each in front of those before it
};

} // namespace CorbelKit
