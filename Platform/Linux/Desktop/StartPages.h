#pragma once

namespace Platform {

/// Unmaps the pages of program and libraries that nothing has written to. They stay in the
/// system's page cache, and what is used again is mapped again without a read; relocation tables,
/// symbols and the libraries' initialisation, which only the start of a process needs, are not: of
/// a small process on many libraries they are half of what is resident. Any thread.
void releaseStartPages();

} // namespace Platform
