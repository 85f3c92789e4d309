#pragma once

#include <gtkmm/window.h>

namespace JobLink {

/// Has Escape close the window. Main thread.
void closeByEscape(Gtk::Window& window);

} // namespace JobLink
