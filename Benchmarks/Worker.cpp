#include "Benchmarks/Worker.h"

#include "Tests/Support/Linux/AgentTrial.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace Benchmarks {

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double privateBytes(std::string_view process) {
    const auto file = "/proc/" + std::string(process) + "/smaps_rollup";
    return static_cast<double>(TestSupport::readProcessNumber(file, "Private_Dirty")) * 1024;
}

void require(bool condition, std::string_view what) {
    if (condition)
        return;
    std::cerr << "The benchmark itself failed: " << what << '\n';
    std::exit(2);
}

} // namespace Benchmarks

/// benchmark-worker WORK [ARGUMENT...]: does the work once for each line that it reads, and writes
/// its figures as one line, `name=number` with spaces between. So that one process can take turns
/// with others, and what it knows from the turn before counts.
int main(int count, char** words) {
    using namespace Benchmarks;
    std::vector<std::string> arguments(words + 1, words + count);
    Works works = passWorks();
    works.merge(agentWorks());
    works.merge(formatWorks());
    const auto work = arguments.empty() ? works.end() : works.find(arguments.front());
    if (work == works.end()) {
        for (const auto& [name, prepare] : works)
            std::cerr << name << '\n';
        return 2;
    }
    arguments.erase(arguments.begin());
    const auto turn = work->second(arguments);
    for (std::string line; std::getline(std::cin, line);) {
        for (const auto& [name, figure] : turn())
            std::printf("%s=%.9g ", name.c_str(), figure);
        std::puts("");
        std::fflush(stdout);
    }
    return 0;
}
