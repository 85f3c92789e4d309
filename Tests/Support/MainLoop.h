#pragma once

namespace TestSupport {

/// Lets the main thread's loop do what is due, without waiting. For tests that run no application,
/// on the main thread.
void drainMainLoop();

} // namespace TestSupport
