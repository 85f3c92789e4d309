#include "Platform/MainThread.h"

#include <unistd.h>

namespace Platform::MainThread {

bool isCurrent() {
    return gettid() == getpid();
}

} // namespace Platform::MainThread
