#pragma once

#include <gtkmm/icontheme.h>

/// GTK, for the windows of this process.
namespace CorbelKit::Toolkit {

/// What must come before anything of GTK, once: the program's names, where it has not set its own,
/// and that GTK leaves alone how the process writes numbers. Main thread.
void prepare();

/// Has GTK started, once; from then on windows follow the user's language and appearance. False
/// where the session has no display. Main thread.
bool start();

/// The icons of the desktop, and the kit's own from the first call on: reading them takes as long
/// as a third of GTK's whole start. Once it has started. Main thread.
Glib::RefPtr<Gtk::IconTheme> iconTheme();

} // namespace CorbelKit::Toolkit
