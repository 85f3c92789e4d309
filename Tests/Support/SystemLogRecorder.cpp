// Preloaded into a process whose system log a test wants to read: each line goes to the file that
// CORBEL_SYSTEM_LOG names instead.

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

struct CloseFile {
    void operator()(FILE* file) const { static_cast<void>(std::fclose(file)); }
};

void record(const char* format, va_list arguments) {
    const char* path = std::getenv("CORBEL_SYSTEM_LOG");
    const std::unique_ptr<FILE, CloseFile> log(path != nullptr ? std::fopen(path, "a") : nullptr);
    if (!log)
        return;
    std::vfprintf(log.get(), format, arguments);
    std::fputc('\n', log.get());
}

} // namespace

extern "C" {

// The call as it is written, and as a fortified build makes it.
__attribute__((visibility("default"))) void syslog(int /*priority*/, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    record(format, arguments);
    va_end(arguments);
}

__attribute__((visibility("default"))) void __syslog_chk(int /*priority*/, int /*flag*/,
                                                         const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    record(format, arguments);
    va_end(arguments);
}
}
