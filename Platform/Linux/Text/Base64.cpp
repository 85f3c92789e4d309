#include "Platform/Base64.h"

#include <glib.h>

#include <memory>

namespace Platform {
namespace {

struct Free {
    void operator()(char* text) const { g_free(text); }
};

} // namespace

std::string base64EncodedString(std::string_view bytes) {
    const std::unique_ptr<char, Free> text(
        g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size()));
    return text.get();
}

} // namespace Platform
