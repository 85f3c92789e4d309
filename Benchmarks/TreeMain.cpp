#include "Benchmarks/TreeBenchmarks.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

/// 20,000 folders, a hundred at a time within one, with ten files each.
void fill(const std::filesystem::path& tree) {
    for (int number = 0; number < 20'000; ++number) {
        const auto folder = tree / ("group" + std::to_string(number / 1000)) /
                            ("section" + std::to_string(number / 100)) /
                            ("folder" + std::to_string(number));
        std::filesystem::create_directories(folder);
        for (int file = 0; file < 10; ++file)
            TestSupport::writeFile(folder / ("file" + std::to_string(file)), "");
    }
}

} // namespace

int main() {
    const TestSupport::TemporaryFolder tree;
    fill(tree.path());
    const bool monitorHolds = Benchmarks::measureMonitor(tree.path());
    const bool itemsHold = Benchmarks::measureFileItem(tree.path());
    return monitorHolds && itemsHold ? EXIT_SUCCESS : EXIT_FAILURE;
}
