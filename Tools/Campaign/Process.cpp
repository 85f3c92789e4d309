#include "Tools/Campaign/Process.h"

#include "Tests/Support/Linux/AgentTrial.h"
#include "Tests/Support/TemporaryFolder.h"

#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <sstream>
#include <string>

namespace Campaign {
namespace {

namespace fs = std::filesystem;

// The user's and the system's share stand 12th and 13th behind the name: proc(5).
double processorMilliseconds(const fs::path& process) {
    const auto text = TestSupport::contentOf(process / "stat");
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    std::string field;
    for (int skipped = 0; skipped < 11; ++skipped)
        fields >> field;
    double user = 0;
    double system = 0;
    fields >> user >> system;
    return (user + system) * 1000 / static_cast<double>(sysconf(_SC_CLK_TCK));
}

} // namespace

ProcessState stateOf(pid_t process) {
    using TestSupport::readProcessNumber;
    const auto folder = fs::path("/proc") / std::to_string(process);
    return {.processorMilliseconds = processorMilliseconds(folder),
            .privateKilobytes = readProcessNumber(folder / "smaps_rollup", "Private_Dirty"),
            .residentKilobytes = readProcessNumber(folder / "smaps_rollup", "Rss"),
            .descriptors = std::distance(fs::directory_iterator(folder / "fd"), {}),
            .threads = readProcessNumber(folder / "status", "Threads")};
}

double slope(const std::vector<std::pair<double, double>>& valuesOverTime) {
    const auto count = static_cast<double>(valuesOverTime.size());
    double times = 0;
    double values = 0;
    double products = 0;
    double squares = 0;
    for (const auto& [time, value] : valuesOverTime) {
        times += time;
        values += value;
        products += time * value;
        squares += time * time;
    }
    const double divisor = count * squares - times * times;
    return divisor > 0 ? (count * products - times * values) / divisor : 0;
}

} // namespace Campaign
