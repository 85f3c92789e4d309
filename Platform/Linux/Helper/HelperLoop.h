#pragma once

#include <functional>

/// The thread on which the process's connections to helpers live. The main thread's loop would not
/// do: who waits there for a helper's answer would wait for ever.
namespace Platform::HelperLoop {

/// Tasks run in the order of the calls, never within the call. GLib's call-backs of what they begin
/// come on the same thread. Any thread.
void invoke(std::function<void()> task);

} // namespace Platform::HelperLoop
