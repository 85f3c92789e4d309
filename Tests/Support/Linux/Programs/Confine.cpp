// Runs a command under the system-call filter of a service's unit, where no service manager does:
// confine UNIT COMMAND [ARGUMENT...]. What the unit names is expanded as the manager does it, which
// has the groups; a call outside fails with EPERM.

#include "Tests/Support/Linux/ChildProcess.h"

#include <seccomp.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <set>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using Calls = std::set<std::string>;

void addCalls(const std::string& name, Calls& calls) {
    if (!name.starts_with('@')) {
        calls.insert(name);
        return;
    }
    const TestSupport::ChildProcess listing(
        {"systemd-analyze", "--no-pager", "syscall-filter", name});
    std::istringstream lines(listing.readAll());
    std::string line;
    if (!std::getline(lines, line)) // the group's own name
        throw std::runtime_error("systemd-analyze does not know " + name);
    while (std::getline(lines, line)) {
        std::string member;
        if (std::istringstream(line) >> member && !member.starts_with('#'))
            addCalls(member, calls);
    }
}

Calls callsAllowedBy(const char* unit) {
    const std::string key = "SystemCallFilter=";
    std::ifstream lines(unit);
    Calls allowed;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(key))
            continue;
        const bool isForbidding = line.substr(key.size()).starts_with('~');
        std::istringstream names(line.substr(key.size() + (isForbidding ? 1 : 0)));
        Calls calls;
        for (std::string name; names >> name;)
            addCalls(name, calls);
        if (isForbidding) {
            std::erase_if(allowed, [&calls](const auto& call) { return calls.contains(call); });
        } else {
            allowed.merge(calls);
        }
    }
    return allowed;
}

void confine(const Calls& allowed) {
    const auto filter = seccomp_init(SCMP_ACT_ERRNO(EPERM));
    for (const auto& call : allowed) {
        const int number = seccomp_syscall_resolve_name(call.c_str());
        if (number >= 0) // others are of other architectures
            seccomp_rule_add(filter, SCMP_ACT_ALLOW, number, 0);
    }
    if (allowed.empty() || prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || seccomp_load(filter) != 0)
        throw std::runtime_error("the filter cannot be set");
    seccomp_release(filter);
}

} // namespace

int main(int argumentCount, char** argumentVector) {
    const std::span arguments(argumentVector, static_cast<std::size_t>(argumentCount) + 1);
    if (argumentCount < 3)
        return 2;
    try {
        confine(callsAllowedBy(arguments[1]));
        execvp(arguments[2], arguments.subspan(2).data());
        std::perror(arguments[2]);
    } catch (const std::exception& exception) {
        std::cerr << exception.what() << std::endl;
    }
    return EXIT_FAILURE;
}
