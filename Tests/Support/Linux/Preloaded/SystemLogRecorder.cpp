// Preloaded into a process whose system log a test wants to read: each line goes to the file that
// CORBEL_SYSTEM_LOG names instead, behind the name under which the process logs.

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

const char* identifier = "";

void record(const char* format, va_list arguments) {
    std::array<char, 1000> line{};
    std::vsnprintf(line.data(), line.size(), format, arguments);
    if (const char* const path = std::getenv("CORBEL_SYSTEM_LOG"))
        std::ofstream(path, std::ios::app) << identifier << ": " << line.data() << '\n';
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) void openlog(const char* name, int /*options*/,
                                                    int /*facility*/) {
    identifier = name;
}

// The call as it is written, and as a fortified build makes it.
__attribute__((visibility("default"))) void syslog(int /*priority*/, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    record(format, arguments);
    va_end(arguments);
}

// NOLINTNEXTLINE(readability-identifier-naming): the C library's name
__attribute__((visibility("default"))) void __syslog_chk(int /*priority*/, int /*flag*/,
                                                         const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    record(format, arguments);
    va_end(arguments);
}
}
