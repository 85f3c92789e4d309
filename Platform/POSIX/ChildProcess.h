#pragma once

#include <spawn.h>
#include <sys/types.h>

/// Where systems differ in the making of processes.
namespace Platform {

/// Has a process that is about to be started keep no descriptor of ours but the standard streams,
/// which the actions have set already. Adds to both; zero or an `errno` value.
int closeAllButStandardStreams(posix_spawn_file_actions_t& actions, posix_spawnattr_t& attributes);

/// Collects the child process in the background once it has ended, so that none stays behind dead.
/// Nobody else may wait for it. Callable on any thread.
void collectWhenEnded(pid_t child);

} // namespace Platform
