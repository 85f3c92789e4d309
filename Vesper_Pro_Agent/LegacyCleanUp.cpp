#include "Vesper_Pro_Agent/LegacyCleanUp.h"

#include "CorbelKit/Services/Const.h"
#include "CorbelKit/Services/Defaults.h"
#include "CorbelKit/Services/RunTool.h"
#include "Platform/DispatchQueue.h"
#include "Platform/MainThread.h"

#include <string>
#include <utility>
#include <vector>

namespace Vesper_Pro_Agent {
namespace {

constexpr auto defaultsTool = "/usr/bin/defaults";

void run(std::string_view tool, std::vector<std::string> arguments) {
    CorbelKit::runTool(std::move(arguments), std::string(tool), CorbelKit::SendNewline::yes);
}

void runTools() {
    for (const auto* domain : {"com.tarnwell.VesperX8", "com.tarnwell.VesperX9"}) {
        run(defaultsTool,
            {"write", domain, std::string(CorbelKit::Defaults::runAgent), "-bool", "FALSE"});
    }
    run(CorbelKit::Const::Command::launchctl,
        {"remove", std::string(CorbelKit::Const::App::Identifier::vesperX4Agent)});
}

} // namespace

void removeLegacyAgents(std::function<void()> completion) {
    Platform::DispatchQueue::blocking("com.tarnwell.LegacyCleanUp")
        .async([completion = std::move(completion)] {
            runTools();
            Platform::MainThread::run(completion);
        });
}

} // namespace Vesper_Pro_Agent
