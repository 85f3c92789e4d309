#pragma once

#include <gtkmm/columnview.h>

namespace JobLink {

/// Gives the titles of the table's columns to the keyboard and to screen readers: the toolkit sorts
/// by a click alone, and has no names for them. Main thread, once all columns are there.
void makeTitlesAccessible(Gtk::ColumnView& table);

} // namespace JobLink
