#pragma once

#include <chrono>
#include <functional>

/// GLib's default main context, as the place where the main queue's tasks run.
namespace Platform::MainContext {

/// Tasks run in the order of the calls, never within the call. Any thread.
void invoke(std::function<void()> task);
void invokeAfter(std::chrono::nanoseconds delay, std::function<void()> task);

} // namespace Platform::MainContext
