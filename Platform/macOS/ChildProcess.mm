#include "Platform/POSIX/ChildProcess.h"

#include <dispatch/dispatch.h>
#include <sys/wait.h>

#include <cerrno>

namespace Platform {

int closeAllButStandardStreams(posix_spawn_file_actions_t& /*actions*/,
                               posix_spawnattr_t& attributes) {
    short flags = 0;
    if (const int code = posix_spawnattr_getflags(&attributes, &flags))
        return code;
    // Everything is closed but what the actions name.
    return posix_spawnattr_setflags(&attributes,
                                    static_cast<short>(flags | POSIX_SPAWN_CLOEXEC_DEFAULT));
}

void collectWhenEnded(pid_t child) {
    // Of a child that has ended already, the source fires as soon as it is active.
    const dispatch_source_t source =
        dispatch_source_create(DISPATCH_SOURCE_TYPE_PROC, static_cast<uintptr_t>(child),
                               DISPATCH_PROC_EXIT, dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0));
    dispatch_source_set_event_handler(source, ^{
        while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
        dispatch_source_cancel(source); // which also lets go of the source, held by this handler
    });
    dispatch_activate(source);
}

} // namespace Platform
