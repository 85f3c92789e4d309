#pragma once

namespace TestSupport {

/// The most memory that this process has ever had, in bytes.
long peakMemory();

} // namespace TestSupport
