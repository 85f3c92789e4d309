#include "Platform/Linux/Loops/SourceTask.h"

#include <memory>
#include <utility>

namespace Platform {
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

} // namespace

void attachTask(GSource* newSource, GMainContext* context, Task task) {
    const std::unique_ptr<GSource, SourceUnref> source(newSource);
    g_source_set_priority(source.get(), G_PRIORITY_DEFAULT);
    auto owned = std::make_unique<Task>(std::move(task));
    g_source_set_callback(source.get(), runTask, owned.release(),
                          [](gpointer data) { std::unique_ptr<Task>(static_cast<Task*>(data)); });
    g_source_attach(source.get(), context);
}

} // namespace Platform
