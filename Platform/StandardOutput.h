#pragma once

#include <chrono>
#include <string>

/// Standard output for a process that must not wait for it: a terminal may be stopped, the reader
/// of a pipe may sleep, a disk may be full for a while. Callable on any thread.
namespace Platform::StandardOutput {

/// Writes the line, and its end, in its turn, and returns at once. While what was written before
/// does not drain, lines wait, up to 256 KiB of them; those beyond are dropped, and a line says how
/// many when it drains again. A line that cannot be written (a full disk, a reader that has gone)
/// is lost, and no reason not to write the next.
void writeLine(std::string line);

/// Waits until all lines are written or lost, as long as the patience lasts; whether they are. For
/// a process that is about to end.
bool drain(std::chrono::milliseconds patience);

} // namespace Platform::StandardOutput
