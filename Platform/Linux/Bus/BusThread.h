#pragma once

#include "Platform/Linux/Loops/TimerQueue.h"

#include <asio/any_io_executor.hpp>

namespace Platform {

/// The one thread on which all connections to buses live. It starts with the first of them, lasts
/// as long as the process, and never waits for anything but the connections' sockets and times.
/// (None of the pool's: whoever waits for an answer may hold those.)
asio::any_io_executor busExecutor();

/// That thread's.
TimerQueue& busTimers();

} // namespace Platform
