#pragma once

#include "CorbelKitInterface/SymbolEffect.h"

#include <gtkmm/widget.h>

#include <cstddef>

namespace CorbelKit {

/// Has the icon that is the layer of that index (from 0) of a symbol bounce upwards, a little after
/// the layers before it. GTK plays it while the icon is to be seen, and not at all where the user
/// has turned animations off. Main thread.
void addBounce(Gtk::Widget& layer, std::size_t index, const EffectRepeat& repeat);

} // namespace CorbelKit
