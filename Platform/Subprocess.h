#pragma once

#include "Platform/Expected.h"
#include "Platform/FileHandle.h"
#include "Platform/URL.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Platform {

/// How a process is started: an executable by absolute path, without a shell and without a search.
/// A plain value.
struct Subprocess {
    URL executableURL;                  ///< of a file, absolute
    std::vector<std::string> arguments; ///< without the program's own name

    /// Replaces the environment; absent: the process inherits ours.
    std::optional<std::map<std::string, std::string>> environment;

    /// Descriptors of the three standard streams. All other descriptors of ours are closed there.
    /// @{
    int standardInput = 0;
    int standardOutput = 1;
    int standardError = 2;
    /// @}

    /// Starts the process and returns without waiting for it; its end is collected in the
    /// background, so that no dead process stays behind. The caller keeps the descriptors. Signals
    /// have their default effect in the started process. Callable on any thread.
    std::optional<Error> launch() const;
};

} // namespace Platform
