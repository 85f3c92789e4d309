#include "Platform/Linux/Helper/HelperLoop.h"

#include "Platform/Linux/Loops/SourceTask.h"
#include "Platform/NeverDestroyed.h"

#include <memory>
#include <thread>
#include <utility>

namespace Platform::HelperLoop {
namespace {

struct ContextUnref {
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};

/// Runs from the first connection to the end of the process, and rests while there is none.
class Loop {
public:
    Loop()
        : context_(g_main_context_new())
        , thread_([context = context_.get()] {
            g_main_context_push_thread_default(context);
            for (;;)
                g_main_context_iteration(context, TRUE);
        }) {}

    GMainContext* context() const { return context_.get(); }

private:
    const std::unique_ptr<GMainContext, ContextUnref> context_;
    const std::thread thread_;
};

} // namespace

void invoke(std::function<void()> task) {
    static const NeverDestroyed<Loop> loop;
    attachTask(g_idle_source_new(), loop.get().context(), std::move(task));
}

} // namespace Platform::HelperLoop
