#include "Tests/Support/MainLoop.h"

#include <glib.h>

namespace TestSupport {

void drainMainLoop() {
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
}

} // namespace TestSupport
