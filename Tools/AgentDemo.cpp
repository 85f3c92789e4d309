// Shows the agent at work in a home of its own: changes real job files, shows what it reports of
// them, and ends well only if it reported exactly what it should.

#include "Tests/Support/Linux/AgentTrial.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

using TestSupport::AgentTrial;
using TestSupport::jobFile;

class Demo {
public:
    explicit Demo(const std::filesystem::path& agent)
        : trial_(agent) {}

    bool run() {
        std::cout << "Starting the agent with a home in " << trial_.home().parent_path().string()
                  << std::endl;
        if (!trial_.start()) {
            std::cout << "The agent did not start." << std::endl;
            return false;
        }
        changeJobs();
        if (trial_.end() != EXIT_SUCCESS)
            fail("the agent did not end well");
        while (const auto line = trial_.nextLine())
            fail("unexpected: " + line->text);
        return isAsExpected_;
    }

private:
    void changeJobs() {
        const auto job = trial_.userAgents() / "org.example.demo.plist";
        step(
            "A job is added for the user", [&] { trial_.save(job, jobFile("org.example.demo")); },
            "New: ~/Library/LaunchAgents/org.example.demo.plist");
        const auto daemon = trial_.library() / "LaunchDaemons/org.example.daemon.plist";
        step(
            "A daemon is added for the machine",
            [&] { trial_.save(daemon, jobFile("org.example.daemon")); }, "New: " + daemon.string());
        step(
            "The job is saved with other content",
            [&] { trial_.save(job, jobFile("org.example.demo", "\t<key>Nice</key><true/>\n")); },
            "Modified: ~/Library/LaunchAgents/org.example.demo.plist");
        const auto renamed = trial_.userAgents() / "org.example.renamed.plist";
        const auto tool = trial_.library() / "PrivilegedHelperTools/org.example.tool";
        step(
            "The job is renamed (which is no news), and a helper tool added",
            [&] {
                std::filesystem::rename(job, renamed);
                trial_.save(tool, "a tool");
            },
            "New: " + tool.string());
        step(
            "The maker's own job is added (which is no news), and the renamed job deleted",
            [&] {
                trial_.save(trial_.userAgents() / "updater.plist", jobFile("com.tarnwell.updater"));
                std::filesystem::remove(renamed);
            },
            "Deleted: ~/Library/LaunchAgents/org.example.renamed.plist");
    }

    void step(const std::string& words, const auto& change, const std::string& expectedBody) {
        std::cout << "\n* " << words << std::endl;
        change();
        const auto line = trial_.nextLine(std::chrono::seconds(3));
        std::cout << "  " << (line ? line->text : "(nothing)") << std::endl;
        if (!line || !line->text.ends_with(" " + expectedBody))
            fail("expected " + expectedBody);
    }

    void fail(const std::string& words) {
        std::cout << "  FAILED: " << words << std::endl;
        isAsExpected_ = false;
    }

    AgentTrial trial_;
    bool isAsExpected_ = true;
};

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: agent-demo <agent>" << std::endl;
        return 2;
    }
    try {
        const bool isAsExpected = Demo(std::filesystem::absolute(arguments[1])).run();
        std::cout << (isAsExpected ? "\nExactly the expected notifications came."
                                   : "\nThe agent did not do as expected.")
                  << std::endl;
        return isAsExpected ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& exception) {
        std::cerr << exception.what() << std::endl;
        return EXIT_FAILURE;
    }
}
