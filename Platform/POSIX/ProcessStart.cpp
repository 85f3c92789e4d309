#include "Platform/POSIX/ProcessStart.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace Platform::ProcessStart {

void ensureStandardStreams() {
    int opened = 0;
    do {
        opened = ::open("/dev/null", O_RDWR);
    } while (opened >= 0 && opened <= STDERR_FILENO);
    if (opened > STDERR_FILENO)
        ::close(opened);
}

void setSignals() {
    sigset_t none;
    sigemptyset(&none);
    pthread_sigmask(SIG_SETMASK, &none, nullptr);
    std::signal(SIGCHLD, SIG_DFL);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, [](int) {}); // ignored, it would be in every program that this one starts
}

std::vector<int> endRequests() {
    struct sigaction action{};
    const bool isHangUpIgnored =
        sigaction(SIGHUP, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
    return isHangUpIgnored ? std::vector{SIGTERM, SIGINT} : std::vector{SIGTERM, SIGINT, SIGHUP};
}

} // namespace Platform::ProcessStart
