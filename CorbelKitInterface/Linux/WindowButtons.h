#pragma once

#include <gtkmm/window.h>

namespace CorbelKit {

/// Gives the window the buttons that macOS draws and names by itself: one to close it, where the
/// desktop has it, and the question mark of the user's language on a button of the class "help",
/// each called in that language what it is for. The title bar is a header bar, or none. Main
/// thread, before each showing: the desktop's choice may have changed.
void dressWindowButtons(Gtk::Window& window);

} // namespace CorbelKit
