#pragma once

#include "Platform/MainThread.h"

#include <dispatch/dispatch.h>

namespace Platform {

/// Runs the block on the main thread, which alone may ask AppKit, and returns when it has run.
inline void callOnMainThread(void (^block)()) {
    if (MainThread::isCurrent())
        block();
    else
        dispatch_sync(dispatch_get_main_queue(), block);
}

} // namespace Platform
