#include "Platform/FileHandle.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>

namespace Platform {

std::optional<Pipe> Pipe::make() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        return std::nullopt;
    for (const int end : ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    return Pipe{.fileHandleForReading = FileHandle(ends[0]),
                .fileHandleForWriting = FileHandle(ends[1])};
}

} // namespace Platform
