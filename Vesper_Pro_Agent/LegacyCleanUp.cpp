#include "Vesper_Pro_Agent/LegacyCleanUp.h"

#include "CorbelKit/Services/Const.h"
#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/RunTool.h"

#include <string>
#include <vector>

namespace Vesper_Pro_Agent {
namespace {

constexpr auto defaultsTool = "/usr/bin/defaults";

void run(std::string_view tool, std::vector<std::string> arguments) {
    CorbelKit::runTool(std::move(arguments), std::string(tool), CorbelKit::SendNewline::yes);
}

} // namespace

void removeLegacyAgents() {
    for (const auto* domain : {"com.tarnwell.VesperX8", "com.tarnwell.VesperX9"}) {
        run(defaultsTool,
            {"write", domain, std::string(CorbelKit::Defaults::runAgent), "-bool", "FALSE"});
    }
    run(CorbelKit::Const::Command::launchctl,
        {"remove", std::string(CorbelKit::Const::App::Identifier::vesperX4Agent)});
}

} // namespace Vesper_Pro_Agent
