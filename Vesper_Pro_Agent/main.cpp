#include "Platform/Application.h"
#include "Platform/Bundle.h"
#include "Vesper_Pro_Agent/AppDelegate.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace {

constexpr const char* usage =
    R"(vesper-pro-agent: notifies of what arranges to be started by itself

  vesper-pro-agent [--help | --version]

Watches the launchd folders, and those that CORBEL_STARTUP_FOLDERS names, until it is
asked to end by SIGTERM, SIGINT or SIGHUP. The exit code is 75 where another one runs.
)";

int print(const std::string& text) {
    std::fputs(text.c_str(), stdout);
    return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view option = argumentCount == 2 ? arguments[1] : "";
    if (option == "--help")
        return print(usage);
    if (option == "--version") {
        return print("vesper-pro-agent " +
                     Platform::Bundle::main().text("CFBundleShortVersionString") + '\n');
    }
    std::exit(Platform::Application::run(argumentCount, arguments, [] {
        return std::make_unique<Vesper_Pro_Agent::AppDelegate>();
    }));
}
