#pragma once
#include_next <pthread.h>
#include <unistd.h>

/// Whether this is the thread that `main` was called on: pthread(3) of macOS.
inline int pthread_main_np() {
    return gettid() == getpid() ? 1 : 0;
}
