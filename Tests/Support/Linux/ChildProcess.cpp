#include "Tests/Support/Linux/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace TestSupport {
namespace {

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> list;
    for (auto& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

} // namespace

pid_t startProcess(std::vector<std::string> command, std::vector<std::string> environment,
                   int standardOutput, bool showsErrors) {
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, standardOutput, STDOUT_FILENO);
    if (!showsErrors)
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = -1;
    const int failure = posix_spawnp(&process, command.front().c_str(), &actions, nullptr,
                                     pointers(command).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    return failure == 0 ? process : -1;
}

ChildProcess::ChildProcess(std::vector<std::string> command, std::vector<std::string> environment) {
    environment.emplace_back("PATH=/usr/bin:/bin");
    std::array<int, 2> output{};
    if (pipe2(output.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    // What it starts may outlive it, and must hold no pipe that a test runner reads to its end.
    process_ = startProcess(std::move(command), std::move(environment), output[1], false);
    output_ = output[0];
    close(output[1]);
    if (process_ == -1) {
        close(output_);
        throw std::runtime_error("cannot start a program");
    }
}

ChildProcess::~ChildProcess() {
    end();
    close(output_);
}

std::string ChildProcess::readLine() const {
    std::string line;
    for (char character = 0; read(output_, &character, 1) == 1 && character != '\n';)
        line += character;
    return line;
}

std::string ChildProcess::readAll() const {
    std::string text;
    for (char character = 0; read(output_, &character, 1) == 1;)
        text += character;
    return text;
}

void ChildProcess::send(int signal) const {
    if (process_ != -1)
        kill(process_, signal);
}

void ChildProcess::end(int signal) {
    if (process_ == -1)
        return;
    kill(process_, signal);
    waitpid(std::exchange(process_, -1), nullptr, 0);
}

} // namespace TestSupport
