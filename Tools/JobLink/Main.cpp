// Vesper Pro on Linux: shows the job that a link of the agent's leads to, or all of them.

#include "CorbelKit/Services/Const.h"
#include "CorbelKitInterface/Linux/Toolkit.h"
#include "Tools/JobLink/JobLinkApplication.h"

#include <glib.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

namespace {

constexpr const char* usage =
    R"(vesper-job-link: shows what arranges to be started by itself

  vesper-job-link                            all jobs of the watched folders
  vesper-job-link vesperpro10joburl://PATH   one job; PATH in Base64
  vesper-job-link --help, --version

The folders are launchd's, and those that CORBEL_STARTUP_FOLDERS names. What a link
names elsewhere is not opened. A second one hands its link to the first.
)";

int print(const char* text) {
    const bool isWritten = std::fputs(text, stdout) >= 0 && std::fflush(stdout) == 0;
    return isWritten ? EXIT_SUCCESS : EXIT_FAILURE;
}

// A link that is handed to an instance whose last window has just been closed is not taken: soon
// that one is gone, and this one is the first.
int run(int argumentCount, char** arguments) {
    constexpr int attempts = 5;
    int status = EXIT_FAILURE;
    for (int attempt = 0; attempt < attempts && status != EXIT_SUCCESS; ++attempt) {
        if (attempt > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        status = JobLink::JobLinkApplication().run(argumentCount, arguments);
    }
    return status;
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::string_view option = argumentCount == 2 ? arguments[1] : "";
    if (option == "--help")
        return print(usage);
    if (option == "--version")
        return print("vesper-job-link " CORBEL_VERSION "\n");
    namespace App = CorbelKit::Const::App;
    g_set_prgname(std::string(App::Identifier::vesperPro).c_str()); // the windows' class
    g_set_application_name(std::string(App::Name::vesperPro).c_str());
    CorbelKit::Toolkit::prepare();
    return run(argumentCount, arguments);
}
