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

/// The same, for windows that show none of the kit's symbols, and are there so much sooner.
bool startWithoutSymbols();

/// The icons of the desktop, and the kit's own. Once it has started.
Glib::RefPtr<Gtk::IconTheme> iconTheme();

} // namespace CorbelKit::Toolkit
