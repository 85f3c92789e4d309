#pragma once

#include <sys/types.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace Campaign {

/// What a process holds and has used up to now.
struct ProcessState {
    double processorMilliseconds = 0;
    long privateKilobytes = 0; ///< written, of no other process
    long residentKilobytes = 0;
    std::ptrdiff_t descriptors = 0;
    long threads = 0;
};

ProcessState stateOf(pid_t process);

/// The least-squares slope of values over times; 0 for fewer than two.
double slope(const std::vector<std::pair<double, double>>& valuesOverTime);

} // namespace Campaign
