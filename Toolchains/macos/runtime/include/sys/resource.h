#pragma once
#include_next <sys/resource.h>

// The kernel of macOS counts the largest resident set in bytes.
inline int corbelGetrusage(int who, struct rusage* usage) {
    const int result = getrusage(who, usage);
    usage->ru_maxrss *= 1024;
    return result;
}
#define getrusage(who, usage) corbelGetrusage(who, usage)
