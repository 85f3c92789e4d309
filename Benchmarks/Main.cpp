#include "Benchmarks/Benchmarks.h"

#include <chrono>
#include <cstdlib>
#include <string>

/// agent-benchmark [SECONDS]: how long the agent rests; more than five minutes show also what
/// wakes it seldom.
int main(int count, char** arguments) {
    const std::chrono::seconds rest(count > 1 ? std::stoi(arguments[1]) : 10);
    const bool passesHold = Benchmarks::measurePasses();
    const bool processHolds = Benchmarks::measureProcess(rest);
    return passesHold && processHolds ? EXIT_SUCCESS : EXIT_FAILURE;
}
