#include "Platform/MainThread.h"

#include <pthread.h>

namespace Platform::MainThread {

bool isCurrent() {
    return pthread_main_np() != 0;
}

} // namespace Platform::MainThread
