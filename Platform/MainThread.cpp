#include "Platform/MainThread.h"

#include "Platform/Log.h"

#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>

namespace Platform::MainThread {

void run(DispatchQueue::Task task) {
    DispatchQueue::main().async(std::move(task));
}

void check(std::source_location location) {
    if (isCurrent())
        return;
    const auto message = std::string("Fatal error: not on the main thread, in ") +
                         location.function_name() + ", file " + location.file_name() + ", line " +
                         std::to_string(location.line());
    std::cerr << message << std::endl;
    log(message);
    std::abort();
}

} // namespace Platform::MainThread
