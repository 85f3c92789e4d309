#pragma once

#include <glib.h>

#include <functional>

namespace Platform {

/// Has the context run the task once, when the source that GLib just made is due. Takes over the
/// caller's reference to the source. Null: GLib's default context. Any thread.
void attachTask(GSource* newSource, GMainContext* context, std::function<void()> task);

} // namespace Platform
