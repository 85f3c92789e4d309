#pragma once

#include <sys/types.h>

#include <csignal>
#include <string>
#include <vector>

namespace TestSupport {

/// Starts a program with these variables, each as "name=value", and the descriptor as its standard
/// output. Its standard error is that of this process, or goes nowhere. -1 where it cannot be
/// started.
pid_t startProcess(std::vector<std::string> command, std::vector<std::string> environment,
                   int standardOutput, bool showsErrors);

/// A program that a test needs beside it, killed with the object. What it prints can be read line
/// by line; its standard error goes nowhere.
class ChildProcess {
public:
    /// The program is looked for in /usr/bin and /bin. Its environment holds that PATH and the
    /// given variables, each as "name=value". Throws where it cannot be started.
    explicit ChildProcess(std::vector<std::string> command,
                          std::vector<std::string> environment = {});
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The next line, without its end; empty when the program has closed its output.
    std::string readLine() const;

    /// Reads all that the program prints until it closes its output.
    std::string readAll() const;

    void send(int signal) const;

    /// Ends it, and waits until it has ended.
    void end(int signal = SIGKILL);

private:
    pid_t process_ = -1;
    int output_ = -1;
};

} // namespace TestSupport
