#pragma once

namespace Platform {

/// Gives back to the system what the process has freed and holds for later: worth its while after
/// work that needed much for a moment. Callable on any thread.
void releaseFreedMemory();

} // namespace Platform
