// Stands in for the fuzzing engine where there is none: gives a target each file of its corpus
// once.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2)
        return EXIT_FAILURE;
    int inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::cout << entry.path().filename().string() << std::endl; // the last one is it
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++inputs;
    }
    return inputs > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
