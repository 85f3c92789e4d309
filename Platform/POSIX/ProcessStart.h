#pragma once

#include <vector>

/// What a process sets right before it becomes an application.
namespace Platform::ProcessStart {

/// A closed standard stream would give its number to the next file opened, and what is printed
/// would go there.
void ensureStandardStreams();

/// Signals as the process needs them, whatever it was started with: none is blocked, the end of a
/// child can be waited for, and a reader that goes away, or a file that has come to the limit of
/// its size, is a failed write, not the end of the process.
void setSignals();

/// The signals by which a process is asked to end: by the user, by the system, and by the end of
/// the terminal or of the session, unless it was started to outlive that.
std::vector<int> endRequests();

} // namespace Platform::ProcessStart
