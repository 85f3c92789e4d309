#pragma once

#include <glib.h>

#include <memory>

namespace Platform {

struct GFree {
    void operator()(gpointer memory) const { g_free(memory); }
};

/// A text that GLib made.
using GStringPtr = std::unique_ptr<char, GFree>;

} // namespace Platform
