#pragma once

#include "Platform/DispatchQueue.h"

#include <source_location>

/// The thread that owns all state of the application.
namespace Platform::MainThread {

/// Whether the calling thread is the main one.
bool isCurrent();

/// Sends the task to the main thread, from any thread. It never runs within this call.
void run(DispatchQueue::Task task);

/// Stops the process, naming the caller's source file and line, when called on another thread.
void check(std::source_location location = std::source_location::current());

} // namespace Platform::MainThread
