#pragma once

#include <sys/types.h>

namespace Platform {

/// Collects the child process in the background once it has ended, so that none stays behind dead.
/// Nobody else may wait for it. Callable on any thread.
void collectWhenEnded(pid_t child);

} // namespace Platform
