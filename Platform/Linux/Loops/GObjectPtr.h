#pragma once

#include <gio/gio.h>

#include <memory>

namespace Platform {

struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

struct GVariantUnref {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};

struct GErrorFree {
    void operator()(GError* error) const { g_error_free(error); }
};

struct GFree {
    void operator()(gpointer memory) const { g_free(memory); }
};

/// One reference to an object of GLib's, given back at the end.
template <class T>
using GObjectPtr = std::unique_ptr<T, GObjectUnref>;

/// A value that D-Bus carries: never changed once made, so any thread may read it.
using GVariantPtr = std::unique_ptr<GVariant, GVariantUnref>;

using GErrorPtr = std::unique_ptr<GError, GErrorFree>;
using GStringPtr = std::unique_ptr<char, GFree>;

/// Takes a value as its makers return it: a reference that nobody holds yet.
inline GVariantPtr takeVariant(GVariant* floating) {
    return GVariantPtr(g_variant_ref_sink(floating));
}

} // namespace Platform
