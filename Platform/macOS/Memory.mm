#include "Platform/Memory.h"

namespace Platform {

// The system's allocator marks freed pages as reusable by itself.
void releaseFreedMemory() {}

} // namespace Platform
