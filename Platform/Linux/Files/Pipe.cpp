#include "Platform/FileHandle.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>

namespace Platform {

std::optional<Pipe> Pipe::make() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    return Pipe{.fileHandleForReading = FileHandle(ends[0]),
                .fileHandleForWriting = FileHandle(ends[1])};
}

} // namespace Platform
