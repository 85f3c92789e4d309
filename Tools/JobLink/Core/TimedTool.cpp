#include "Tools/JobLink/Core/TimedTool.h"

#include "CorbelKit/Services/RunTool.h"

#include <algorithm>
#include <cstdlib>
#include <map>

namespace JobLink {
namespace {

/// The package system takes wildcards (dpkg-query(1)); a backslash makes each a plain character.
std::string exactPattern(const std::string& path) {
    constexpr std::string_view wildcards = "*?[]\\";
    std::string pattern;
    for (const char character : path) {
        if (wildcards.find(character) != std::string_view::npos)
            pattern += '\\';
        pattern += character;
    }
    return pattern;
}

} // namespace

std::string runTimedTool(const std::string& path, const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"--kill-after=1", "10", path};
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::map<std::string, std::string> environment{{"LC_ALL", "C"}, {"PATH", "/usr/bin:/bin"}};
    for (const auto* const name :
         {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "DBUS_SESSION_BUS_ADDRESS"}) {
        if (const char* const value = std::getenv(name))
            environment.emplace(name, value);
    }
    return CorbelKit::runTool(command, "/usr/bin/timeout", CorbelKit::SendNewline::no, environment);
}

std::optional<std::string> installedPackage(const std::string& path) {
    auto output = runTimedTool("/usr/bin/dpkg-query", {"--search", "--", exactPattern(path)});
    const auto end = ": " + path;
    for (std::size_t begin = 0; begin < output.size();) {
        const auto next = std::min(output.find('\n', begin), output.size());
        const auto line = output.substr(begin, next - begin);
        begin = next + 1;
        const bool isDiversion = line.starts_with("diversion by") || line.starts_with("local ");
        if (!isDiversion && line.ends_with(end))
            return line.substr(0, line.size() - end.size());
    }
    const bool isSearched = output.find("no path found matching") != std::string::npos;
    return isSearched ? std::optional(std::string()) : std::nullopt;
}

} // namespace JobLink
