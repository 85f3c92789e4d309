#pragma once

#include "CorbelKitInterface/Controls.h"

#include <gtkmm/builder.h>
#include <gtkmm/widget.h>

namespace CorbelKit {

/// A widget of a layout.
struct NativeView {
    Glib::RefPtr<Gtk::Builder> layout; // which keeps the widget
    Gtk::Widget& widget;
};

} // namespace CorbelKit
