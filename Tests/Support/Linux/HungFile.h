#pragma once

#include "Platform/FileHandle.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/fanotify.h>

#include <cstdint>
#include <filesystem>

namespace TestSupport {

/// Holds whoever reads the file or lists the folder, as a file system does that has stopped
/// answering.
class HungFile {
public:
    explicit HungFile(const std::filesystem::path& path) {
        const std::uint64_t kinds =
            std::filesystem::is_directory(path) ? FAN_ACCESS_PERM | FAN_ONDIR : FAN_ACCESS_PERM;
        isHung_ = fanotify_mark(listener_.fileDescriptor(), FAN_MARK_ADD, kinds, AT_FDCWD,
                                path.c_str()) == 0;
    }

    /// False without the right to answer for the file system (CAP_SYS_ADMIN).
    bool isHung() const { return isHung_; }

    bool isAsked() const {
        pollfd waiting{.fd = listener_.fileDescriptor(), .events = POLLIN, .revents = 0};
        return poll(&waiting, 1, 0) == 1;
    }

    /// Everyone who asks is let through from then on.
    void answer() { listener_ = Platform::FileHandle(-1); }

private:
    Platform::FileHandle listener_{fanotify_init(FAN_CLASS_CONTENT | FAN_CLOEXEC, O_RDONLY)};
    bool isHung_ = false;
};

} // namespace TestSupport
