#pragma once

#include "Platform/Linux/Loops/TimerQueue.h"

#include <asio/any_io_executor.hpp>

namespace Platform {

/// The few threads that run every queue but the main one, wait for descriptors and keep timers.
/// They start with the first use and last as long as the process. What may block has its place
/// elsewhere: `BlockingThreads`.
asio::any_io_executor workerExecutor();

/// Theirs. What a timer starts does no more than send a task somewhere.
TimerQueue& workerTimers();

} // namespace Platform
