#include "Tests/Support/Linux/BusDaemon.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>
#include <utility>
#include <vector>

namespace TestSupport {
namespace {

std::string configuration(const std::filesystem::path& folder) {
    return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
           "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
           "<busconfig><type>session</type><listen>unix:path=" +
           (folder / "bus").string() + "</listen><servicedir>" + (folder / "services").string() +
           "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/>"
           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n";
}

pid_t spawn(std::vector<std::string> command, int standardOutput) {
    std::vector<char*> arguments;
    for (auto& word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, standardOutput, STDOUT_FILENO);
    // What the bus starts may outlive it, and must hold no pipe that a test runner reads to its
    // end.
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = -1;
    const int failure =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return failure == 0 ? process : -1;
}

std::string readLine(int descriptor) {
    std::string line;
    for (char character = 0; read(descriptor, &character, 1) == 1 && character != '\n';)
        line += character;
    return line;
}

} // namespace

BusDaemon::BusDaemon(const ActivatableServices& services) {
    std::filesystem::create_directory(folder_ / "services");
    for (const auto& [name, command] : services) {
        writeFile(folder_ / "services" / (name + ".service"),
                  "[D-BUS Service]\nName=" + name + "\nExec=" + command + "\n");
    }
    writeFile(folder_ / "bus.conf", configuration(folder_.path()));
    std::array<int, 2> output{};
    if (pipe2(output.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    process_ = spawn({"dbus-daemon", "--nofork", "--print-address=1",
                      "--config-file=" + (folder_ / "bus.conf").string()},
                     output[1]);
    close(output[1]);
    address_ = readLine(output[0]);
    close(output[0]);
    if (process_ == -1 || address_.empty())
        throw std::runtime_error("dbus-daemon does not start");
}

BusDaemon::~BusDaemon() {
    end();
}

void BusDaemon::end() {
    if (process_ == -1)
        return;
    kill(process_, SIGTERM);
    waitpid(std::exchange(process_, -1), nullptr, 0);
}

} // namespace TestSupport
