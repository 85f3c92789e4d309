#pragma once

#include "Platform/POSIX/ProcessStart.h"

#include <csignal>

namespace Platform {

/// While it lives, requests to the process to end are for other threads than this one, which may
/// hang in a file system, where it answers no signal. For threads that run as long as the process.
class SignalsElsewhere {
public:
    SignalsElsewhere() {
        sigset_t requests;
        sigemptyset(&requests);
        sigaddset(&requests, SIGALRM); // the last of them
        for (const int signal : ProcessStart::endRequests())
            sigaddset(&requests, signal);
        pthread_sigmask(SIG_BLOCK, &requests, &before_);
    }

    ~SignalsElsewhere() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

    SignalsElsewhere(const SignalsElsewhere&) = delete;
    SignalsElsewhere& operator=(const SignalsElsewhere&) = delete;
    SignalsElsewhere(SignalsElsewhere&&) = delete;
    SignalsElsewhere& operator=(SignalsElsewhere&&) = delete;

private:
    sigset_t before_{};
};

} // namespace Platform
