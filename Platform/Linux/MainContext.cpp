#include "Platform/Linux/MainContext.h"

#include <glib.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace Platform::MainContext {
namespace {

using Task = std::function<void()>;

struct SourceUnref {
    void operator()(GSource* source) const { g_source_unref(source); }
};

// GLib is C: an exception must end the process here rather than unwind through it.
gboolean runTask(gpointer task) noexcept {
    (*static_cast<Task*>(task))();
    return G_SOURCE_REMOVE;
}

void attach(GSource* newSource, Task task) {
    const std::unique_ptr<GSource, SourceUnref> source(newSource);
    g_source_set_priority(source.get(), G_PRIORITY_DEFAULT);
    auto owned = std::make_unique<Task>(std::move(task));
    g_source_set_callback(source.get(), runTask, owned.release(),
                          [](gpointer data) { std::unique_ptr<Task>(static_cast<Task*>(data)); });
    g_source_attach(source.get(), nullptr);
}

} // namespace

void invoke(Task task) {
    attach(g_idle_source_new(), std::move(task));
}

void invokeAfter(std::chrono::nanoseconds delay, Task task) {
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(delay).count();
    const auto interval =
        std::clamp<std::int64_t>(milliseconds, 0, std::numeric_limits<guint>::max());
    attach(g_timeout_source_new(static_cast<guint>(interval)), std::move(task));
}

} // namespace Platform::MainContext
