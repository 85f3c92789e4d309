#include "Tests/Support/PeakMemory.h"

#include <sys/resource.h>

namespace TestSupport {

long peakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace TestSupport
