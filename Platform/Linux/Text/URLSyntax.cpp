#include "Platform/Native/URLSyntax.h"

#include <glib.h>

namespace Platform {

bool isAbsoluteURL(const std::string& text) {
    return g_uri_is_valid(text.c_str(), G_URI_FLAGS_ENCODED, nullptr) != FALSE;
}

} // namespace Platform
