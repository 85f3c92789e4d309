#include "Benchmarks/Benchmarks.h"

#include <cstdlib>

int main() {
    const bool passesHold = Benchmarks::measurePasses();
    const bool processHolds = Benchmarks::measureProcess();
    return passesHold && processHolds ? EXIT_SUCCESS : EXIT_FAILURE;
}
