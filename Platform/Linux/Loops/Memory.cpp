#include "Platform/Memory.h"

#include <malloc.h>

namespace Platform {

void releaseFreedMemory() {
    malloc_trim(0);
}

} // namespace Platform
