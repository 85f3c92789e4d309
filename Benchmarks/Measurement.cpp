#include "Benchmarks/Measurement.h"

#include <algorithm>
#include <cstdio>

namespace Benchmarks {

std::vector<Seconds> timeInTurns(const std::vector<std::function<void()>>& works, int rounds) {
    std::vector<Seconds> best(works.size(), Seconds::max());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t index = 0; index < works.size(); ++index) {
            const auto start = std::chrono::steady_clock::now();
            works[index]();
            best[index] = std::min(best[index], Seconds(std::chrono::steady_clock::now() - start));
        }
    }
    return best;
}

bool report(const std::string& what, double figure, double limit, const std::string& unit) {
    const bool holds = figure <= limit;
    std::printf("%-64s %8.2f %-4s at most %8.2f  %s\n", what.c_str(), figure, unit.c_str(), limit,
                holds ? "holds" : "DOES NOT HOLD");
    std::fflush(stdout);
    return holds;
}

} // namespace Benchmarks
