#include "Tools/Campaign/Campaign.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <string>
#include <string_view>

namespace {

int usage() {
    std::fprintf(stderr, "usage: agent-campaign oracle ROUNDS [SEED]\n"
                         "       agent-campaign soak MINUTES\n"
                         "       agent-campaign faults PART-OF-NAME\n"
                         "       agent-campaign work MINUTES\n"
                         "       agent-campaign rest MINUTES\n");
    return 2;
}

bool run(const std::string& what, int number, std::optional<std::uint64_t> seed) {
    if (what == "oracle")
        return Campaign::oracle(number, seed);
    if (what == "soak")
        return Campaign::soak(std::chrono::minutes(number));
    if (what == "work")
        return Campaign::work(std::chrono::minutes(number));
    if (what == "rest")
        return Campaign::rest(std::chrono::minutes(number));
    std::exit(usage());
}

} // namespace

int main(int argumentCount, char** argumentVector) {
    const std::span arguments(argumentVector, static_cast<std::size_t>(argumentCount));
    if (arguments.size() < 3)
        return usage();
    try {
        if (std::string_view(arguments[1]) == "faults")
            return Campaign::meetFaults(arguments[2]) ? EXIT_SUCCESS : EXIT_FAILURE;
        std::optional<std::uint64_t> seed;
        if (arguments.size() > 3)
            seed = std::stoull(arguments[3]);
        return run(arguments[1], std::stoi(arguments[2]), seed) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return EXIT_FAILURE;
    }
}
